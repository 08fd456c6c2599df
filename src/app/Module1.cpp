#include "Module1.h"

#include "Files.h"

namespace mirvalde {
namespace {

SoundFiles SoundsBesideExecutable() {
    const std::string folder = ExecutableFolder().toStdString();
    return {folder + "/gagner.wav", folder + "/perdu.wav"};
}

}  // namespace

Module1::Module1()
    : instance_(ExecutableBaseName()),
      settings_(ExecutableBaseName()),
      game_(random_, clock_, sound_, SoundsBesideExecutable(), UserDecimalSeparator()),
      tavrines_(random_, clock_, settings_) {}

Module1::~Module1() {
    delete frmTavrines_;
    delete form1_;
}

bool Module1::Main() {
    // A second copy ends here, silently, before any window exists.
    if (instance_.AnotherCopyRunning()) return false;
    LoadForm1();
    form1_->show();
    return true;
}

void Module1::LoadForm1() {
    form1_ = new Form1(game_);
    connect(form1_, &Form1::tenthNumberFound, this, &Module1::HandOverToTavrines);
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
