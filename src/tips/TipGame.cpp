#include "TipGame.h"

namespace mirvalde {
namespace {

constexpr const char* kSection = "Options";
constexpr const char* kKey = "Show Tips at Startup";
constexpr const char* kFileName = "TIPOFDAY.TXT";

}  // namespace

const char* const kMissingTipsText =
    "Le fichier TIPOFDAY.TXT n'a pas été trouvé? \r\n\r\n"
    "Créez un fichier texte nommé TIPOFDAY.TXT en utilisant le Bloc-notes avec une astuce par "
    "ligne. Puis placez le dans le même dossier que l'application.";

TipGame::TipGame(SettingsStore& settings, std::string tipsFolder)
    : settings_(settings), tipsPath_(std::move(tipsFolder) + "/" + kFileName) {}

bool TipGame::ShowAtStartup() const {
    return settings_.ReadNumber(kSection, kKey, 1) != 0;
}

bool TipGame::Form_Load(bool asked) {
    controls_ = frmTipControls{};
    if (ShowAtStartup()) {
        controls_.chkLoadTipsAtStartup = true;
        chkLoadTipsAtStartup_Click(true);
    } else if (!asked) {
        return false;
    }
    if (!LoadTips(tipsPath_)) controls_.lblTipText = kMissingTipsText;
    return true;
}

bool TipGame::LoadTips(const std::string& sFile) {
    if (sFile.empty()) return false;
    std::optional<TipsFile> tips = TipsFile::Read(sFile);
    if (!tips) return false;
    module_.TipList = std::move(*tips);
    SelectNextTip();
    return true;
}

void TipGame::SelectNextTip() {
    ++module_.TipIndex;
    if (module_.TipList.Count() < static_cast<std::size_t>(module_.TipIndex)) module_.TipIndex = 1;
    DisplayCurrentTip();
}

void TipGame::DisplayCurrentTip() {
    if (module_.TipList.Empty()) return;
    controls_.lblTipText = module_.TipList.Line(static_cast<std::size_t>(module_.TipIndex - 1));
}

void TipGame::chkLoadTipsAtStartup_Click(bool ticked) {
    controls_.chkLoadTipsAtStartup = ticked;
    settings_.Write(kSection, kKey, ticked ? "1" : "0");
}

}  // namespace mirvalde
