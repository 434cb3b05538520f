// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A print server on this computer, with its own files, that no other program knows.
#pragma once

#include <QProcess>
#include <QSize>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// The scheduler of CUPS with its filters for PDF printers. What arrives at a printer is kept as a
// file. From its construction on this process prints there.
class PrintServer {
public:
    PrintServer();
    ~PrintServer();
    PrintServer(const PrintServer&) = delete;
    PrintServer& operator=(const PrintServer&) = delete;

    // Adds a printer, or changes its paper: "A4" or "Letter".
    void addPrinter(const QString& name, const QString& paper);

    // Runs a command of the administrator: "cupsdisable", "cupsreject", "lpadmin" and the like.
    void run(const QString& command, const QStringList& arguments);

    // What has arrived at a printer.
    struct Job {
        QString printer;
        QString title;
        QString pdf;          // the path of the file
        QList<QSize> papers;  // of each page, in points
    };

    // Waits for the next job that this has not returned yet; fails the test if none comes.
    Job nextJob();

    // The number of jobs that have arrived beyond those that nextJob() has returned.
    int moreJobs() const;

    // The server vanishes when the next job begins to be sent, until it is back.
    void vanishAtNextJob();
    void comeBack();

private:
    class Relay;

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QStringList arrived() const;
    void writeFile(const QString& name, QString content) const;  // "@FOLDER@": this folder
    void writeSettings() const;

    QTemporaryDir m_folder;
    QProcess m_scheduler;
    std::unique_ptr<Relay> m_relay;
    int m_returned = 0;
};
