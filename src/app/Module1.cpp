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
    if (!LoadForm1()) return false;
    form1_->show();
    return true;
}

bool Module1::LoadForm1() {
    auto* form = new Form1(game_, [this] { return instance_.AnotherCopyRunning(); });
    if (!form->Form_Load()) {
        delete form;
        return false;
    }
    form1_ = form;
    Track(form);
    return true;
}

void Module1::Track(QWidget* window) {
    ++loadedWindows_;
    connect(window, &QObject::destroyed, this, [this] {
        if (--loadedWindows_ == 0) emit lastWindowUnloaded();
    });
}

}  // namespace mirvalde
