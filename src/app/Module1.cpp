#include "Module1.h"

#include "Files.h"
#include "Form1.h"

namespace mirvalde {
namespace {

SoundFiles SoundsBesideExecutable() {
    const std::string folder = ExecutableFolder().toStdString();
    return {folder + "/gagner.wav", folder + "/perdu.wav"};
}

}  // namespace

Module1::Module1()
    : instance_(ExecutableBaseName()),
      game_(random_, clock_, sound_, SoundsBesideExecutable(), UserDecimalSeparator()) {}

Module1::~Module1() {
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
    form1_->Form_Load();
    Track(form1_);
}

void Module1::Track(QWidget* window) {
    ++loadedWindows_;
    connect(window, &QObject::destroyed, this, [this] {
        if (--loadedWindows_ == 0) emit lastWindowUnloaded();
    });
}

}  // namespace mirvalde
