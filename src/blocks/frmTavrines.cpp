#include "frmTavrines.h"

#include <QApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>

#include "ColourSymbols.h"
#include "DesignedControl.h"
#include "Pictures.h"
#include "ShapeControl.h"
#include "TavrinesDesign.h"
#include "WellBox.h"
#include "WindowPlacement.h"

namespace mirvalde {
namespace {

constexpr QSize kClientSize = PixelSize(kTavrinesClientWidth, kTavrinesClientHeight);

constexpr const char* kSpeedCaptions[] = {"&1 Très lent", "&2 Lent", "&3 Normal", "&4 Rapide",
                                          "&5 Très rapide"};

}  // namespace

int VirtualKeyCode(int qtKey) {
    switch (qtKey) {
        case Qt::Key_Left:
            return kKeyLeft;
        case Qt::Key_Up:
            return kKeyUp;
        case Qt::Key_Right:
            return kKeyRight;
        case Qt::Key_Down:
            return kKeyDown;
        case Qt::Key_Space:
            return kKeySpace;
        case Qt::Key_Q:
            return kKeyQ;
        case Qt::Key_P:
            return kKeyP;
        case Qt::Key_Pause:
            return kKeyPause;
        default:
            return 0;
    }
}

frmTavrines::frmTavrines(TavrinesGame& game, QWidget* parent) : QMainWindow(parent), game_(game) {
    setObjectName(QStringLiteral("frmTavrines"));
    setWindowTitle(FromUtf8(kTavrinesCaption));
    setWindowIcon(GameIcon());
    setAttribute(Qt::WA_DeleteOnClose);
    // A fixed border with neither a minimise nor a maximise button.
    setWindowFlags(Qt::Window | kWithoutMinMaxButtons);
    CreateMenus();
    CreateControls();
    tmrCase_.setTimerType(Qt::PreciseTimer);
    connect(&tmrCase_, &QTimer::timeout, this, &frmTavrines::tmrCase_Timer);
    // The window hears the game's keys before any of its controls does.
    qApp->installEventFilter(this);
}

frmTavrines::~frmTavrines() {
    game_.SetPicture(nullptr);
}

QWidget* frmTavrines::Control(std::string_view name) const {
    return controls_.Find(name);
}

void frmTavrines::CreateMenus() {
    QMenu* jeu = menuBar()->addMenu(QStringLiteral("&Jeu"));
    jeu->setObjectName(QStringLiteral("mnuJeu"));
    QAction* nouveau =
        jeu->addAction(QStringLiteral("&Nouveau"), this, &frmTavrines::mnuNouveau_Click);
    nouveau->setObjectName(QStringLiteral("mnuNouveau"));
    nouveau->setShortcut(QKeySequence(Qt::Key_F2));
    jeu->addSeparator()->setObjectName(QStringLiteral("mnuSEP00"));
    QAction* quitter =
        jeu->addAction(QStringLiteral("&Quitter"), this, &frmTavrines::mnuQuitter_Click);
    quitter->setObjectName(QStringLiteral("mnuQuitter"));
    quitter->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    mnuVitesse_ = menuBar()->addMenu(QStringLiteral("&Vitesse"));
    mnuVitesse_->setObjectName(QStringLiteral("mnuVitesse"));
    // Check marks rather than an exclusive group's bullets: the window moves the mark itself.
    for (int index = 1; index <= 5; ++index) {
        QAction* item = mnuVitesse_->addAction(QString::fromUtf8(kSpeedCaptions[index - 1]), this,
                                               [this, index] { mnuSpeed_Click(index); });
        item->setObjectName(QStringLiteral("mnuSpeed(%1)").arg(index));
        mnuSpeed_[index] = item;
    }

    QMenu* affichage = menuBar()->addMenu(QStringLiteral("&Affichage"));
    affichage->setObjectName(QStringLiteral("mnuAffichage"));
    mnuSymboles_ = affichage->addAction(QStringLiteral("&Symboles sur les couleurs"), this,
                                        &frmTavrines::mnuSymboles_Click);
    mnuSymboles_->setObjectName(QStringLiteral("mnuSymboles"));
    mnuSymboles_->setCheckable(true);
}

void frmTavrines::CreateControls() {
    auto* client = new QWidget(this);
    client->setObjectName(QStringLiteral("client"));
    client->setFixedSize(kClientSize);
    setCentralWidget(client);

    // The well is the one picture box, and it draws itself.
    controls_.Build(TavrinesDesign(), client, [this](const ControlDesign& design, QWidget* parent) {
        return design.kind == ControlKind::PictureBox ? picZone_ = new WellBox(parent) : nullptr;
    });
    picZone_->setAccessibleName(QStringLiteral("Puits"));
    game_.SetPicture(picZone_);

    // Labels keep their text as their name; what they count is their description.
    constexpr const char* kCouleurs[] = {"rouges", "noirs", "verts", "bleus", "jaunes", "magenta"};
    for (int i = 0; i < kColonnes; ++i) {
        Control(CarreName(i))->setAccessibleName(QStringLiteral("Carrés %1").arg(kCouleurs[i]));
        Control(StatCouleurName(i))
            ->setAccessibleDescription(QStringLiteral("Nombre de carrés %1").arg(kCouleurs[i]));
    }
    Control("Shape2")->setAccessibleName(QStringLiteral("Cadre des scores"));
    Control("shpSeparation(0)")->setAccessibleName(QStringLiteral("Séparateur"));
    Control("shpSeparation(1)")->setAccessibleName(QStringLiteral("Séparateur"));
    Control("lblScore")->setAccessibleDescription(QStringLiteral("Score"));
    Control("lblMeilleur")->setAccessibleDescription(QStringLiteral("Meilleur score"));
    Control("lblNom")->setAccessibleDescription(QStringLiteral("Nom du meilleur joueur"));
}

void frmTavrines::Form_Load() {
    game_.Form_Load();
    ShowControls();
    ShowLegendSymbols();
    ensurePolished();
    setFixedSize(kClientSize.width(), kClientSize.height() + menuBar()->sizeHint().height());
    CentreOnScreen(this);
}

void frmTavrines::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isMinimized()) {
        game_.PauseByItself();
        ShowControls();
    }
}

void frmTavrines::hideEvent(QHideEvent* event) {
    QMainWindow::hideEvent(event);
    game_.PauseByItself();
    ShowControls();
}

void frmTavrines::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    CentreOnFirstShow(this);
}

void frmTavrines::ShowControls() {
    const TavrinesControls& shown = game_.Controls();
    const auto caption = [this](std::string_view name, const std::string& text) {
        auto* label = qobject_cast<QLabel*>(Control(name));
        const QString wanted = FromUtf8(text);
        if (label->text() == wanted) return;
        label->setText(wanted);
        FitLabelToText(label);
    };
    for (int i = 0; i < kColonnes; ++i) {
        caption(StatCouleurName(i), shown.lblStatCouleur[static_cast<std::size_t>(i)]);
    }
    caption("lblCarres", shown.lblCarres);
    caption("lblBlocs", shown.lblBlocs);
    caption("lblScore", shown.lblScore);
    caption("lblNom", shown.lblNom);
    caption("lblMeilleur", shown.lblMeilleur);
    caption("lblVitesse", shown.lblVitesse);
    picZone_->setAccessibleDescription(FromUtf8(game_.DescriptionPuits()));
    mnuVitesse_->setEnabled(shown.mnuVitesseEnabled);
    // Only the chosen speed is checkable: styles draw an empty box beside the others.
    for (int index = 1; index <= 5; ++index) {
        mnuSpeed_[index]->setCheckable(index == shown.mnuSpeedChecked);
        mnuSpeed_[index]->setChecked(index == shown.mnuSpeedChecked);
    }

    // The timer starts its period afresh only when the game switches it on or changes it:
    // a key never delays the next tick. A period of 0 never ticks.
    const bool running = shown.tmrCaseEnabled && shown.tmrCaseInterval > 0;
    if (shown.tmrCaseInterval != timerInterval_ || shown.tmrCaseStarts != timerStarts_ ||
        running != tmrCase_.isActive()) {
        timerInterval_ = shown.tmrCaseInterval;
        timerStarts_ = shown.tmrCaseStarts;
        if (running) {
            tmrCase_.start(shown.tmrCaseInterval);
        } else {
            tmrCase_.stop();
        }
    }
}

void frmTavrines::mnuNouveau_Click() {
    game_.mnuNouveau_Click();
    ShowControls();
}

void frmTavrines::mnuQuitter_Click() {
    emit quitRequested();
}

void frmTavrines::mnuSymboles_Click() {
    game_.mnuSymboles_Click();
    ShowControls();
    ShowLegendSymbols();
}

// The symbols change only at a load and through their menu, never at a tick.
void frmTavrines::ShowLegendSymbols() {
    const bool on = game_.Controls().mnuSymbolesChecked;
    mnuSymboles_->setChecked(on);
    for (int i = 0; i < kColonnes; ++i) {
        const Couleur couleur = kCouleurs[static_cast<std::size_t>(i)];
        const auto draw = [couleur](QPainter& painter, const QRect& square) {
            DrawColourSymbol(painter, square, couleur);
        };
        static_cast<ShapeControl*>(Control(CarreName(i)))
            ->SetOverlay(on ? std::function(draw) : nullptr);
    }
}

void frmTavrines::mnuSpeed_Click(int index) {
    game_.mnuSpeed_Click(index);
    ShowControls();
}

void frmTavrines::Form_KeyDown(int keyCode) {
    game_.Form_KeyDown(keyCode);
    ShowControls();
}

void frmTavrines::tmrCase_Timer() {
    game_.tmrCase_Timer();
    ShowControls();
    if (!game_.PartieFinie()) return;
    if (game_.NomDemande()) AskBestName();
    ShowControls();
    emit gameEnded();
}

void frmTavrines::AskBestName() {
    QInputDialog box(this);
    box.setWindowTitle(QStringLiteral("HIGH SCORE"));
    box.setLabelText(QStringLiteral("Bravo! vous avez le meilleur score, votre nom : "));
    box.setTextValue(FromUtf8(game_.Module().NomMeilleur));
    const QString answer = box.exec() == QDialog::Accepted ? box.textValue() : QString();
    // Settings that cannot be written (a full disk, a read-only folder) keep the best stored
    // before, whole: the player is told that the new one was not kept.
    if (game_.NommeMeilleur(answer.toStdString())) return;
    QMessageBox told(QMessageBox::Warning, windowTitle(),
                     QStringLiteral("Le meilleur score n'a pas pu être enregistré : le disque est "
                                    "peut-être plein, ou le dossier des réglages protégé en "
                                    "écriture. Le meilleur score précédent reste enregistré."),
                     QMessageBox::Ok, this);
    told.exec();
}

bool frmTavrines::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* widget = qobject_cast<QWidget*>(watched);
        const auto* key = static_cast<QKeyEvent*>(event);
        const int code = VirtualKeyCode(key->key());
        // F10 gives the menu bar the keyboard, its first menu open, as on every desktop.
        if (key->key() == Qt::Key_F10 && key->modifiers() == Qt::NoModifier && widget &&
            widget->window() == this) {
            menuBar()->setActiveAction(menuBar()->actions().first());
            return true;
        }
        // Only this window's own keys, and never a menu's or a dialog's: the menu bar keeps
        // the keyboard from Alt, F10 or a click on a title until it lets it go.
        const bool menuActive = qobject_cast<QMenuBar*>(widget) || menuBar()->activeAction();
        if (code != 0 && widget && widget->window() == this && !menuActive) {
            Form_KeyDown(code);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace mirvalde
