#include "Module1.h"

#include <QDir>
#include <QTimer>

#include "Files.h"

namespace mirvalde {
namespace {

#ifndef _WIN32
constexpr int kSoundLoadDelayMs = 200;
#endif

SoundFiles SoundsBesideExecutable() {
    const QString folder = ExecutableFolder();
    return {QDir::toNativeSeparators(folder + QStringLiteral("/gagner.wav")).toStdString(),
            QDir::toNativeSeparators(folder + QStringLiteral("/perdu.wav")).toStdString()};
}

}  // namespace

Module1::Module1()
    :
#ifndef _WIN32
      sound_(ExecutableFolder() + QStringLiteral("/mirvalde_sound")),
#endif
      instance_(ExecutableBaseName()),
      settings_(ExecutableBaseName()),
      game_(random_, clock_, sound_, SoundsBesideExecutable(), UserDecimalSeparator()),
      tavrines_(random_, clock_, settings_),
      tips_(settings_, ExecutableFolder().toStdString()) {
}

Module1::~Module1() {
    delete frmAbout_;
    delete frmTip_;
    delete frmTavrines_;
    delete form1_;
}

bool Module1::Main() {
    // A second copy ends here, silently, before any window exists.
    if (instance_.AnotherCopyRunning()) return false;
    LoadForm1();
    // The tips come first, and alone: the main window waits for them to be closed.
    if (tips_.ShowAtStartup()) {
        if (frmTip* tip = LoadTip(false)) tip->exec();
    }
    form1_->show();
#ifndef _WIN32
    // The sounds are wanted at the first proposal at the earliest: their libraries load once
    // the window is up rather than before it.
    QTimer::singleShot(kSoundLoadDelayMs, this, [this] { sound_.Load(); });
#endif
    return true;
}

void Module1::LoadForm1() {
    form1_ = new Form1(game_);
    connect(form1_, &Form1::tenthNumberFound, this, &Module1::HandOverToTavrines);
    connect(form1_, &Form1::tipsRequested, this, &Module1::BtMenu_Click);
    connect(form1_, &Form1::aboutRequested, this, &Module1::propos_Click);
    form1_->Form_Load();
    Track(form1_);
}

void Module1::LoadTavrines() {
    frmTavrines_ = new frmTavrines(tavrines_);
    connect(frmTavrines_, &frmTavrines::gameEnded, this, &Module1::BackFromTavrines);
    connect(frmTavrines_, &frmTavrines::quitRequested, this, &Module1::programEnded);
    frmTavrines_->Form_Load();
    Track(frmTavrines_);
}

frmTip* Module1::LoadTip(bool asked) {
    auto* tip = new frmTip(tips_);
    if (!tip->Form_Load(asked)) {
        delete tip;
        return nullptr;
    }
    frmTip_ = tip;
    Track(tip);
    return tip;
}

void Module1::BtMenu_Click() {
    // Already open: it comes to the front. The main window stays usable beside it.
    if (!frmTip_ && !LoadTip(true)) return;
    frmTip_->show();
    frmTip_->raise();
    frmTip_->activateWindow();
}

void Module1::propos_Click() {
    form1_->hide();
    frmAbout_ = new frmAbout(SystemRegistry(), shell_);
    frmAbout_->Form_Load();
    Track(frmAbout_);
    // Closed in any way, it gives the main window back as the player left it.
    connect(frmAbout_, &QObject::destroyed, this, [this] {
        if (form1_) form1_->show();
    });
    frmAbout_->show();
}

void Module1::HandOverToTavrines() {
    // The game window is loaded first, so that the program never runs out of windows.
    LoadTavrines();
    frmTavrines_->show();
    form1_->HandOver();
    form1_->close();
}

void Module1::BackFromTavrines() {
    LoadForm1();
    form1_->show();
    frmTavrines_->close();
}

void Module1::Track(QWidget* window) {
    ++loadedWindows_;
    connect(window, &QObject::destroyed, this, [this] {
        if (--loadedWindows_ == 0) emit programEnded();
    });
}

}  // namespace mirvalde
