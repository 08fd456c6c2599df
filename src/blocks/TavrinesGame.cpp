#include "TavrinesGame.h"

#include "NumberFormat.h"
#include "TavrinesDesign.h"

namespace mirvalde {
namespace {

constexpr const char* kSection = "Meilleur Score";
constexpr const char* kAnonyme = "Anonyme";
constexpr std::int32_t kMeilleurParDefaut = 10;
constexpr int kClignotements = 8;

std::string Trim(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(kBlanks);
    return std::string(text.substr(first, last - first + 1));
}

}  // namespace

std::string NumberText(std::int32_t value) {
    return value < 0 ? Digits(value) : " " + Digits(value);
}

TavrinesGame::TavrinesGame(Random& random, const Clock& clock, SettingsStore& settings)
    : random_(random), clock_(clock), settings_(settings) {}

void TavrinesGame::Form_Load() {
    controls_ = TavrinesControls{};
    for (int i = 0; i < kColonnes; ++i) {
        controls_.lblStatCouleur[static_cast<std::size_t>(i)] = TavrinesCaption(StatCouleurName(i));
    }
    controls_.lblCarres = TavrinesCaption("lblCarres");
    controls_.lblBlocs = TavrinesCaption("lblBlocs");
    controls_.lblScore = TavrinesCaption("lblScore");
    controls_.lblVitesse = TavrinesCaption("lblVitesse");
    partieFinie_ = false;
    nomDemande_ = false;
    enPause_ = false;
    controls_.mnuSymbolesChecked = settings_.ReadNumber("Options", "Symboles", 0) == 1;
    if (picture_) {
        picture_->ShowPaused(false);
        picture_->ShowSymbols(controls_.mnuSymbolesChecked);
    }

    random_.Seed(clock_.SecondsSinceMidnight());
    module_.Vitesse = "3";
    module_.Intervalle = 500;
    module_.NomMeilleur = settings_.Read(kSection, "Nom", kAnonyme);
    controls_.lblNom = module_.NomMeilleur;
    module_.Meilleur = settings_.ReadNumber(kSection, "Score", kMeilleurParDefaut);
    controls_.lblMeilleur = NumberText(module_.Meilleur);
}

void TavrinesGame::mnuNouveau_Click() {
    SetPause(false);
    controls_.mnuVitesseEnabled = false;
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) {
            module_.Grille[c][r] = COULEUR_VIDE;
            PaintCell(c, r, COULEUR_VIDE);
        }
        module_.StatCouleur[c] = 0;
        controls_.lblStatCouleur[static_cast<std::size_t>(c - 1)] = "0";
    }
    module_.Blocs = 0;
    module_.Score = 0;
    module_.Carres = 0;
    controls_.lblCarres = "0";
    controls_.lblBlocs = "0";
    controls_.lblScore = "0";
    module_.Perdu = false;
    module_.EnBas = false;
    controls_.tmrCaseInterval = module_.Intervalle;
    GenBloc();
    GenXPos();
    module_.YPos = 0;
    SetTimerEnabled(true);
}

int TavrinesGame::DrawUpTo(int n) {
    return static_cast<int>(DrawWhole(1, n, random_.Next()));
}

void TavrinesGame::GenBloc() {
    for (std::size_t i = 1; i <= 3; ++i) {
        const int code = DrawUpTo(6);
        module_.Bloc[i] = kCouleurs[static_cast<std::size_t>(code - 1)];
        ++module_.StatCouleur[code];
        controls_.lblStatCouleur[static_cast<std::size_t>(code - 1)] =
            NumberText(module_.StatCouleur[code]);
    }
    ++module_.Blocs;
    controls_.lblBlocs = NumberText(module_.Blocs);
    module_.Bloc[4] = COULEUR_VIDE;
}

void TavrinesGame::GenXPos() {
    // Five columns, not six: a trio reaches the last one only by moving there.
    module_.XPos = DrawUpTo(5);
}

void TavrinesGame::DessineBlanc() {
    for (int i = 1; i <= 3; ++i) {
        const int r = module_.YPos + 1 - i;
        if (r < 1) continue;
        module_.Grille[module_.XPos][r] = COULEUR_VIDE;
        PaintCell(module_.XPos, r, COULEUR_VIDE);
    }
}

void TavrinesGame::DessineBloc() {
    // The fourth square is white: a step down empties the cell the trio leaves.
    for (int i = 1; i <= 4; ++i) {
        const int r = module_.YPos + 1 - i;
        if (r < 1) continue;
        module_.Grille[module_.XPos][r] = module_.Bloc[static_cast<std::size_t>(i)];
        PaintCell(module_.XPos, r, module_.Bloc[static_cast<std::size_t>(i)]);
    }
}

void TavrinesGame::PaintCell(int colonne, int ligne, Couleur couleur) {
    if (!picture_) return;
    const int x1 = (colonne - 1) * kCellTwips;
    const int y1 = (ligne - 1) * kCellTwips;
    picture_->FillBox(x1, y1, x1 + kCellTwips, y1 + kCellTwips, couleur);
}

void TavrinesGame::SetTimerEnabled(bool enabled) {
    if (enabled && !controls_.tmrCaseEnabled) ++controls_.tmrCaseStarts;
    controls_.tmrCaseEnabled = enabled;
}

void TavrinesGame::Form_KeyDown(int keyCode) {
    if (!PartieEnCours()) return;
    if (keyCode == kKeyP || keyCode == kKeyPause) {
        SetPause(!enPause_);
        return;
    }
    if (enPause_) return;
    if (keyCode == kKeyUp) Rotation();
    if (keyCode == kKeyLeft) Gauche();
    if (keyCode == kKeyRight) Droite();
    if (keyCode == kKeyDown) Descend();
    if (keyCode == kKeySpace) Descente();
    if (keyCode == kKeyQ) module_.Perdu = true;
}

bool TavrinesGame::PartieEnCours() const {
    // Before the first game the timer has no period; a lost game waits for its last tick.
    return controls_.tmrCaseInterval != 0 && !module_.Perdu && !partieFinie_;
}

void TavrinesGame::mnuSymboles_Click() {
    const bool on = !controls_.mnuSymbolesChecked;
    controls_.mnuSymbolesChecked = on;
    settings_.Write("Options", "Symboles", on ? "1" : "0");
    if (!picture_) return;
    picture_->ShowSymbols(on);
    // Outside a game the well holds no square; in one, it is painted again from the grid.
    if (!PartieEnCours()) return;
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) PaintCell(c, r, module_.Grille[c][r]);
    }
}

void TavrinesGame::PauseByItself() {
    if (PartieEnCours()) SetPause(true);
}

void TavrinesGame::SetPause(bool pause) {
    if (pause == enPause_) return;
    enPause_ = pause;
    SetTimerEnabled(!pause);
    if (picture_) picture_->ShowPaused(pause);
}

bool TavrinesGame::TestEnBas() const {
    if (module_.YPos >= kLignes) return true;
    return module_.Grille[module_.XPos][module_.YPos + 1] != COULEUR_VIDE;
}

bool TavrinesGame::TestPerdu() const {
    // The top square is still above the well.
    return module_.YPos <= 2;
}

void TavrinesGame::Droite() {
    // Stacks have no holes: the cell beside the bottom square tells for the whole trio.
    if (module_.XPos < kColonnes &&
        module_.Grille[module_.XPos + 1][module_.YPos] == COULEUR_VIDE) {
        DessineBlanc();
        ++module_.XPos;
        DessineBloc();
        module_.EnBas = TestEnBas();
    }
}

void TavrinesGame::Gauche() {
    if (module_.XPos > 1 && module_.Grille[module_.XPos - 1][module_.YPos] == COULEUR_VIDE) {
        DessineBlanc();
        --module_.XPos;
        DessineBloc();
        module_.EnBas = TestEnBas();
    }
}

void TavrinesGame::Rotation() {
    auto& bloc = module_.Bloc;
    bloc[4] = bloc[1];
    bloc[1] = bloc[2];
    bloc[2] = bloc[3];
    bloc[3] = bloc[4];
    bloc[4] = COULEUR_VIDE;
    DessineBloc();
}

void TavrinesGame::Descend() {
    if (module_.EnBas) return;
    DessineBlanc();
    ++module_.YPos;
    DessineBloc();
    module_.EnBas = TestEnBas();
}

void TavrinesGame::Descente() {
    if (module_.EnBas) return;
    // The trio's own squares count as taken, so the search stops just above the stack. It
    // never needs to go above the trio; row 1 bounds it all the same.
    int r = kLignes;
    while (r > 1 && module_.Grille[module_.XPos][r] != COULEUR_VIDE) --r;
    DessineBlanc();
    module_.YPos = r;
    DessineBloc();
    module_.EnBas = true;
}

void TavrinesGame::Attendre() const {
    constexpr std::uint32_t kAttente = 20;
    const std::uint32_t t0 = clock_.TickCount();
    // Counted without sign, the elapsed time survives the wrap of the tick count. A count that
    // stops or jumps back cannot hold the game: the time slept bounds the wait too.
    // The thread sleeps to the first tick that ends the wait, in one go: waking every
    // millisecond to look at the clock would cost twenty times the processor time.
    std::uint32_t slept = 0;
    while (true) {
        const std::uint32_t elapsed = clock_.TickCount() - t0;
        const bool wrapped = elapsed >= 0x80000000u;
        if ((elapsed > kAttente && !wrapped) || slept > kAttente) return;
        const std::uint32_t pause = wrapped ? kAttente + 1 - slept : kAttente + 1 - elapsed;
        if (wrapped) {
            clock_.Sleep(pause);
        } else {
            clock_.SleepUntilTick(t0 + kAttente + 1);
        }
        slept += pause;
    }
}

bool TavrinesGame::MarqueLignes() {
    auto& g = module_.Grille;
    auto& marque = module_.Marque;
    const std::int32_t scoreAvant = module_.Score;
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) marque[c][r] = 0;
    }
    const auto ligne = [&](int c1, int r1, int c2, int r2, int c3, int r3) {
        marque[c1][r1] = 1;
        marque[c2][r2] = 1;
        marque[c3][r3] = 1;
        ++module_.Score;
    };
    // Every line of three is tested once, from its lowest cell (the leftmost one across).
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) {
            const Couleur k = g[c][r];
            if (k == COULEUR_VIDE) continue;
            if (r >= 3 && c >= 3 && g[c - 1][r - 1] == k && g[c - 2][r - 2] == k) {
                ligne(c, r, c - 1, r - 1, c - 2, r - 2);
            }
            if (r >= 3 && g[c][r - 1] == k && g[c][r - 2] == k) ligne(c, r, c, r - 1, c, r - 2);
            if (c <= 4 && r >= 3 && g[c + 1][r - 1] == k && g[c + 2][r - 2] == k) {
                ligne(c, r, c + 1, r - 1, c + 2, r - 2);
            }
            if (c <= 4 && g[c + 1][r] == k && g[c + 2][r] == k) ligne(c, r, c + 1, r, c + 2, r);
        }
    }
    return module_.Score != scoreAvant;
}

void TavrinesGame::ChercheSol() {
    SetTimerEnabled(false);
    auto& g = module_.Grille;
    const auto& marque = module_.Marque;
    while (MarqueLignes()) {
        controls_.lblScore = NumberText(module_.Score);
        // The best shown follows a score that beats it; the best itself waits for the end.
        if (module_.Score > module_.Meilleur) {
            controls_.lblMeilleur = NumberText(module_.Score);
            controls_.lblNom = "???";
        }
        for (int c = 1; c <= kColonnes; ++c) {
            for (int r = 1; r <= kLignes; ++r) {
                if (marque[c][r] != 1) continue;
                g[c][r] = COULEUR_VIDE;
                ++module_.Carres;
            }
        }
        controls_.lblCarres = NumberText(module_.Carres);

        for (int fois = 0; fois < kClignotements; ++fois) {
            for (const Couleur couleur : {kCouleurClignote, COULEUR_VIDE}) {
                for (int c = 1; c <= kColonnes; ++c) {
                    for (int r = 1; r <= kLignes; ++r) {
                        if (marque[c][r] == 1) PaintCell(c, r, couleur);
                    }
                }
                if (picture_) picture_->Refresh();
                Attendre();
            }
        }

        for (int c = 1; c <= kColonnes; ++c) {
            int d = kLignes;
            for (int s = kLignes; s >= 1; --s) {
                if (g[c][s] == COULEUR_VIDE) continue;
                g[c][d] = g[c][s];
                if (s != d) g[c][s] = COULEUR_VIDE;
                --d;
            }
            for (int r = 1; r <= kLignes; ++r) PaintCell(c, r, g[c][r]);
        }
    }
    SetTimerEnabled(true);
}

void TavrinesGame::tmrCase_Timer() {
    if (module_.Perdu) {
        FinDePartie();
        return;
    }
    if (module_.EnBas) {
        ChercheSol();
        GenBloc();
        GenXPos();
        module_.YPos = 0;
    }
    ++module_.YPos;
    DessineBloc();
    module_.EnBas = TestEnBas();
    // Only a landing made by the tick itself can lose the game.
    if (module_.EnBas) module_.Perdu = TestPerdu();
}

void TavrinesGame::FinDePartie() {
    SetTimerEnabled(false);
    controls_.mnuVitesseEnabled = true;
    if (picture_) picture_->FillBox(0, 0, kWellWidthTwips, kWellHeightTwips, COULEUR_VIDE);
    partieFinie_ = true;
    if (module_.Score > module_.Meilleur) {
        module_.Meilleur = module_.Score;
        nomDemande_ = true;
    }
}

bool TavrinesGame::NommeMeilleur(std::string_view reponse) {
    nomDemande_ = false;
    module_.NomMeilleur = Trim(reponse);
    if (module_.NomMeilleur.empty()) module_.NomMeilleur = kAnonyme;
    controls_.lblNom = module_.NomMeilleur;
    const bool nom = settings_.Write(kSection, "Nom", module_.NomMeilleur);
    const bool score = settings_.Write(kSection, "Score", Digits(module_.Meilleur));
    return nom && score;
}

std::string TavrinesGame::DescriptionPuits() const {
    if (controls_.tmrCaseInterval == 0) return "Aucune partie en cours. F2 pour commencer.";
    const auto nom = [](Couleur couleur) -> std::string {
        constexpr const char* kNoms[] = {"rouge", "noir", "vert", "bleu", "jaune", "magenta"};
        for (std::size_t i = 0; i < kCouleurs.size(); ++i) {
            if (kCouleurs[i] == couleur) return kNoms[i];
        }
        return "blanc";
    };
    std::string text;
    if (enPause_) {
        text = "Partie en pause, P pour reprendre.";
    } else if (module_.Perdu || partieFinie_) {
        text = "Partie terminée.";
    } else {
        text = "Trio en colonne " + Digits(module_.XPos) + ", ligne " + Digits(module_.YPos) +
               " : " + nom(module_.Bloc[3]) + ", " + nom(module_.Bloc[2]) + ", " +
               nom(module_.Bloc[1]) + " de haut en bas" + (module_.EnBas ? ", posé." : ".");
    }
    return text + " Score : " + Digits(module_.Score) + ".";
}

void TavrinesGame::mnuSpeed_Click(int index) {
    if (index < 1 || index > 5) return;
    module_.Vitesse = Digits(index);
    module_.Intervalle = 1100 - 200 * index;
    controls_.lblVitesse = "Vitesse : " + Digits(index);
    controls_.mnuSpeedChecked = index;
}

}  // namespace mirvalde
