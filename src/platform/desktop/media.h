// Sound files, heard.
#pragma once

#include <QObject>
#include <QString>

struct mpv_handle;

// A device that plays one sound file at a time, driven by words. No word waits for the disk or for
// the loudspeaker. A file that is missing or cannot be played leaves the device closed, without a
// word; on a machine without a loudspeaker it plays in silence.
class Media : public QObject {
    Q_OBJECT

public:
    explicit Media(QObject* parent = nullptr);
    ~Media() override;

    // The file that "Open" opens: its path, with either separator.
    QString FileName;

    // "Open" opens the file and holds it at its start; "play" plays on, from the start where the
    // file has come to its end; "pause" holds; "stop" holds and goes back to the start; "close"
    // lets go of the file. The case of the words does not matter. Without a file all but "Open" do
    // nothing, as does any other word.
    void Command(const QString& word);

    enum class State { Closed, Held, Playing };

    // What the device does, as of the last turn of the event loop.
    State state() const;

    // The place in the file, in seconds, as of the last turn of the event loop; 0 where there is no
    // file.
    double position() const { return m_position; }

private:
    void createPlayer();
    void openFile();
    void takeEvents();
    void hold(bool on);
    void goToStart();
    void send(std::initializer_list<const char*> words);

    mpv_handle* m_player = nullptr;
    bool m_open = false;
    bool m_held = true;
    bool m_atEnd = false;
    double m_position = 0;
};

// The process's one sound device. It outlives the windows.
Media& soundDevice();
