// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/frm_mdi.h"

#include "catalogue/frm_song_admin.h"
#include "charts/sheet_music.h"
#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/shell/bar_keys.h"
#include "core/shell/frm_about.h"
#include "core/shell/frm_splash.h"
#include "core/shell/show_song.h"
#include "core/shell/welcome_links.h"
#include "exchange/frm_exchange.h"
#include "exchange/frm_find_words.h"
#include "mail/frm_email.h"
#include "maintenance/frm_backup.h"
#include "maintenance/frm_notes.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/theme/theme.h"
#include "reports/frm_ccli.h"
#include "reports/frm_history.h"
#include "sets/frm_import_set.h"
#include "sets/frm_past_sets.h"
#include "sets/frm_set_list.h"
#include "team/frm_schedule.h"
#include "team/frm_special_music.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStyle>
#include <QTimer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

frmMDI* g_instance = nullptr;

constexpr int UtilitiesLeft = 11505;  // twips
constexpr int AboutMargin = 150;      // twips
constexpr int FrameWidth = 8;         // of the main window, about, in pixels

constexpr int IconDelay = 200;  // milliseconds until the window's own icon, for the task bar

// The width of a button of the bar in pixels, as a rule and without its caption.
constexpr int UsualButton = 92;
constexpr int IconButton = 48;

// Opens a module: shows it and then moves it to its place.
template <typename Module>
void showModule() {
    Module::instance().Show();
    Module::instance().centre();
}

// Makes the window fit on its screen, with its frame, and centres it.
void placeOnScreen(QWidget& window) {
    const QRect room = window.screen()->availableGeometry();
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    window.resize(window.size().boundedTo(room.size() - QSize(2 * FrameWidth, title + FrameWidth)));
    const QPoint place = room.center() - window.rect().center();
    window.move(std::max(place.x(), room.x()), std::max(place.y(), room.y()));
}

}  // namespace

frmMDI::frmMDI() {
    setupUi(this);
    // cmdAbout is created first but comes last in the tab order. Qt already takes it for the last,
    // since the order is a ring, so it is moved to the front and then to the end.
    setTabOrder(cmdSetList, cmdAbout);
    setTabOrder(Command11, cmdAbout);
    m_registration.emplace(*this);
    dressButtons();
    setUpUtilities();
    setUpKeys();
    wireModules();
    openDatabase();
    offerFirstSteps();
    placeOnScreen(*this);
    splash = new frmSplash(this);
    splash->show();
    reportReadOnlyFolder();
    reportFilesNotUpdated();
    showReminderNotes();
}

frmMDI::Registration::Registration(frmMDI& window) {
    g_instance = &window;
    setMainWindow({&window, window.mdiArea, window.SB, &window.CommonDlg});
}

frmMDI::Registration::~Registration() {
    setMainWindow({});
    g_instance = nullptr;
}

void frmMDI::dressButtons() {
    const struct {
        QToolButton* button;
        const char* icon;
    } looks[] = {
        {cmdSetList, "set-list"},
        {cmdSongMgmt, "song-admin"},
        {cmdHistory, "song-history"},
        {cmdPastSets, "past-sets"},
        {cmdSheetMusic, "sheet-music"},
        {cmdEmail, "email"},
        {cmdScheduling, "scheduling"},
        {Command1, "notes"},
        {Command10, "utilities"},
        {cmdAbout, "about"},
        {Command11, "help"},
    };
    for (const auto& look : looks) look.button->setIcon(themedIcon(QLatin1String(look.icon)));
    // Drawing it in every size takes longer than all the buttons do.
    QTimer::singleShot(IconDelay, this,
                       [] { QApplication::setWindowIcon(themedIcon(QStringLiteral("app"))); });
    mdiArea->setBackground(palette().brush(QPalette::Window));
}

void frmMDI::setUpUtilities() {
    mnuUtilities.setTitle(QStringLiteral("Utilities"));
    mnuSpecialMusic.setText(QStringLiteral("Special Music"));
    mnuImportSet.setText(QStringLiteral("Import Set List"));
    mnuBackupFiles.setText(QStringLiteral("Backup Files"));
    mnuCCLI.setText(QStringLiteral("CCLI Report"));
    mnuUtilities.addActions({&mnuSpecialMusic, &mnuImportSet, &mnuBackupFiles, &mnuCCLI});
    mnuUtilities.addSeparator();
    mnuExchange.setText(QStringLiteral("Exchange..."));
    mnuFindWords.setText(QStringLiteral("Find Words\u2026"));
    mnuUtilities.addActions({&mnuExchange, &mnuFindWords});
}

void frmMDI::setUpKeys() {
    auto* keys = new BarKeys(this, picButHold, mdiArea);
    const std::pair<QToolButton*, char16_t> letters[] = {
        {cmdSetList, u'S'},    {cmdSongMgmt, u'A'}, {cmdHistory, u'H'},    {cmdPastSets, u'P'},
        {cmdSheetMusic, u'M'}, {cmdEmail, u'E'},    {cmdScheduling, u'G'}, {Command1, u'N'},
        {Command10, u'U'},     {cmdAbout, u'B'}};
    for (const auto& [button, letter] : letters) keys->setLetter(button, letter);
}

void frmMDI::wireModules() {
    onEvent(this, cmdSetList, &QToolButton::clicked, &frmMDI::cmdSetList_Click);
    onEvent(this, cmdSongMgmt, &QToolButton::clicked, &frmMDI::cmdSongMgmt_Click);
    onEvent(this, cmdHistory, &QToolButton::clicked, &frmMDI::cmdHistory_Click);
    onEvent(this, cmdPastSets, &QToolButton::clicked, &frmMDI::cmdPastSets_Click);
    onEvent(this, cmdSheetMusic, &QToolButton::clicked, &frmMDI::cmdSheetMusic_Click);
    onEvent(this, cmdEmail, &QToolButton::clicked, &frmMDI::cmdEmail_Click);
    onEvent(this, cmdScheduling, &QToolButton::clicked, &frmMDI::cmdScheduling_Click);
    onEvent(this, Command1, &QToolButton::clicked, &frmMDI::Command1_Click);
    onEvent(this, Command10, &QToolButton::clicked, &frmMDI::Command10_Click);
    onEvent(this, Command11, &QToolButton::clicked, &frmMDI::Command11_Click);
    onEvent(this, cmdAbout, &QToolButton::clicked, &frmMDI::cmdAbout_Click);
    onEvent(this, &mnuSpecialMusic, &QAction::triggered, &frmMDI::mnuSpecialMusic_Click);
    onEvent(this, &mnuImportSet, &QAction::triggered, &frmMDI::mnuImportSet_Click);
    onEvent(this, &mnuBackupFiles, &QAction::triggered, &frmMDI::mnuBackupFiles_Click);
    onEvent(this, &mnuCCLI, &QAction::triggered, &frmMDI::mnuCCLI_Click);
    onEvent(this, &mnuExchange, &QAction::triggered, &frmMDI::mnuExchange_Click);
    onEvent(this, &mnuFindWords, &QAction::triggered, &frmMDI::mnuFindWords_Click);
}

// For a user who has no songs yet.
void frmMDI::offerFirstSteps() {
    if (hasRows("songs")) return;
    welcome = new WelcomeLinks(mdiArea);
    onEvent(this, welcome->lnkFirstSunday, &QToolButton::clicked, &frmMDI::showFirstSteps);
    onEvent(this, welcome->lnkExchange, &QToolButton::clicked, &frmMDI::mnuExchange_Click);
    onEvent(this, welcome->lnkRestore, &QToolButton::clicked, &frmMDI::mnuBackupFiles_Click);
}

void frmMDI::showFirstSteps() { showGuide(QStringLiteral("your-first-sunday")); }

// A portable folder on a stick that is protected, or a home folder without write permission.
void frmMDI::reportReadOnlyFolder() {
    const QString here = QDir::toNativeSeparators(programFolder());
    const QString there = QDir::toNativeSeparators(readOnlyFolder());
    const QString text = QStringLiteral("The folder \"%1\" cannot be written.");
    if (isProgramFolderReadOnly())
        messageBox(text.arg(here) + QStringLiteral(" Nothing that you do now is kept."),
                   BoxIcon::Exclamation);
    else if (!there.isEmpty() && QFile::exists(readOnlyFolder() + QStringLiteral("/db1.mdb")))
        messageBox(text.arg(there) +
                       QStringLiteral(" The work in it stays as it is, and is not shown.\r\rWhat "
                                      "you do now is kept in \"%1\".")
                           .arg(here),
                   BoxIcon::Exclamation);
    else if (!there.isEmpty())
        setStatusText(text.arg(there) + QStringLiteral(" Your work is kept in \"%1\".").arg(here));
}

void frmMDI::reportFilesNotUpdated() {
    const QStringList files = filesNotUpdated();
    if (files.isEmpty()) return;
    setStatusText(QStringLiteral("Not updated to this version of Lorvanite: ") +
                  files.join(QStringLiteral(", ")));
}

// Deliberate: behaviours 1 and 2.
void frmMDI::showReminderNotes() {
    Recordset rs = select(QStringLiteral("SELECT * FROM prefs WHERE var_name = 'NotesOnStartUp'"));
    if (rs.EOF_()) return;
    const QString wanted = rs.Fields("var_value");
    rs.Close();
    if (wanted != QLatin1String("true")) return;
    Recordset notes = select(QStringLiteral("SELECT * FROM notes"));
    QString text;
    for (; !notes.EOF_(); notes.MoveNext()) {
        // A note whose date cannot be read is never due.
        const auto notifyDate = parseDate(notes.Fields("notify_date"));
        if (notifyDate && today() < *notifyDate) text += notes.Fields("notes") + QLatin1Char('\r');
    }
    notes.Close();
    if (!text.isEmpty()) messageBox(text, BoxIcon::Information, QStringLiteral("Reminder Notes"));
}

void frmMDI::cmdSetList_Click() {
    frmSetList::instance().centre();
    frmSetList::instance().Show();
}

void frmMDI::cmdSongMgmt_Click() {
    setMousePointer(MousePointer::Hourglass);
    frmSongAdmin::instance().Show();
    doEvents();
    frmSongAdmin::instance().loadSongMgmt();
    frmSongAdmin::instance().centre();
    setMousePointer(MousePointer::Arrow);
}

void frmMDI::cmdScheduling_Click() { showModule<frmSchedule>(); }

void frmMDI::mnuSpecialMusic_Click() { showModule<frmSpecialMusic>(); }
void frmMDI::mnuImportSet_Click() { showModule<frmImportSet>(); }
void frmMDI::cmdPastSets_Click() { showModule<frmPastSets>(); }
void frmMDI::cmdSheetMusic_Click() { showModule<SheetMusic>(); }
void frmMDI::cmdHistory_Click() {
    setMousePointer(MousePointer::Hourglass);
    showModule<frmHistory>();
    setMousePointer(MousePointer::Arrow);
}

void frmMDI::Command1_Click() {
    frmNotes::instance().centre();
    frmNotes::instance().Show();
}

void frmMDI::mnuBackupFiles_Click() { showModule<frmBackup>(); }
void frmMDI::mnuCCLI_Click() { showModule<frmCCLI>(); }
void frmMDI::mnuExchange_Click() { showModule<frmExchange>(); }
void frmMDI::mnuFindWords_Click() {
    showModule<frmFindWords>();
    frmFindWords::onPicked([this](const IndexedChart& chart) {
        if (!showSong(chart.songID, chart.path)) {
            cmdSongMgmt_Click();
            showSong(chart.songID, QString());
        }
    });
    frmFindWords::instance().refresh();
}

void frmMDI::cmdEmail_Click() { showModule<frmEmail>(); }

void frmMDI::cmdAbout_Click() { showModule<frmAbout>(); }

void frmMDI::Command10_Click() {
    // Deliberate: behaviour 3.
    const QPoint place(px(UtilitiesLeft), Command10->y() + Command10->height());
    mnuUtilities.popup(picButHold->mapToGlobal(place));
}

void frmMDI::Command11_Click() { showGuide(QString()); }

void frmMDI::showGuide(const QString& heading) {
    CommonDlg.HelpCommand = 9;
    CommonDlg.HelpFile = programFolder() + QStringLiteral("\\config\\LORVANITEHELP.hlp");
    CommonDlg.ShowHelp(heading);
}

// Narrower than usual on a small screen; without captions where they have no room.
void frmMDI::fitButtons() {
    QToolButton* const buttons[] = {cmdSetList,    cmdSongMgmt, cmdHistory,    cmdPastSets,
                                    cmdSheetMusic, cmdEmail,    cmdScheduling, Command1,
                                    Command10,     cmdAbout};
    const int count = int(std::size(buttons));
    const int room = width() - barLayout->contentsMargins().left() - barLayout->spacing() * count -
                     Command11->width() - px(AboutMargin);
    int needed = 0;  // by the captions
    int usual = 0;
    for (QToolButton* button : buttons) {
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        needed += button->sizeHint().width();
        usual += std::max(button->sizeHint().width(), UsualButton);
    }
    const int more = room >= usual ? UsualButton : (room - needed) / count;
    for (QToolButton* button : buttons) {
        const int least = button->sizeHint().width();
        if (room < needed) button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        button->setFixedWidth(room < needed ? IconButton
                                            : std::min(std::max(least, UsualButton), least + more));
    }
    cmdAbout->resize(cmdAbout->maximumWidth(), cmdAbout->height());
}

void frmMDI::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    fitButtons();
    // Deliberate: behaviour 4.
    cmdAbout->move(width() - cmdAbout->width() - px(AboutMargin), cmdAbout->y());
}

void frmMDI::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (g_instance == this && event->type() == QEvent::PaletteChange)
        mdiArea->setBackground(palette().brush(QPalette::Window));
}

void frmMDI::closeEvent(QCloseEvent* event) {
    mdiArea->closeAllSubWindows();
    QMainWindow::closeEvent(event);
    endProcess(0);
}
