#include "Form1.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <vector>

#include "DesignedControl.h"
#include "Form1Design.h"
#include "Pictures.h"
#include "WindowPlacement.h"

namespace mirvalde {
namespace {

QString OptionName(int index) {
    return QStringLiteral("Option1(%1)").arg(index);
}

// The window's own text (frames, levels): narrow enough that the captions of the levels fit
// the places they were designed for.
QFont WindowFont() {
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans Narrow"), QStringLiteral("Arial Narrow")});
    font.setPointSizeF(8.25);
    return font;
}

constexpr QSize kClientSize = PixelSize(kForm1ClientWidth, kForm1ClientHeight);

}  // namespace

Form1::Form1(GuessGame& game, QWidget* parent) : QMainWindow(parent), game_(game) {
    setObjectName(QStringLiteral("Form1"));
    setWindowTitle(FromUtf8(kForm1Caption));
    setWindowIcon(GameIcon());
    setAttribute(Qt::WA_DeleteOnClose);
    CreateMenus();
    CreateControls();
}

QWidget* Form1::Control(std::string_view name) const {
    return controls_.Find(name);
}

void Form1::CreateMenus() {
    QMenu* fichier = menuBar()->addMenu(QStringLiteral("&Fichier"));
    fichier->setObjectName(QStringLiteral("Fichier"));
    QAction* astuces = fichier->addAction(QStringLiteral("Astuces"), this, &Form1::tipsRequested);
    astuces->setObjectName(QStringLiteral("BtMenu"));
    QAction* quitter = fichier->addAction(QStringLiteral("&Quitter"), this, &Form1::Quitter_Click);
    quitter->setObjectName(QStringLiteral("Quitter"));

    QMenu* aide = menuBar()->addMenu(QStringLiteral("&?"));
    aide->setObjectName(QStringLiteral("Aide"));
    QAction* propos = aide->addAction(QStringLiteral("&A propos de"), this, &Form1::aboutRequested);
    propos->setObjectName(QStringLiteral("propos"));
}

void Form1::CreateControls() {
    client_ = new QWidget(this);
    client_->setObjectName(QStringLiteral("client"));
    client_->setMinimumSize(kClientSize);
    client_->setFont(WindowFont());
    setCentralWidget(client_);

    controls_.Build(Form1Design(), client_);
    for (const ControlDesign& design : Form1Design()) layout_.Add(design.name, design.place);

    Boxsaisie_ = qobject_cast<QLineEdit*>(Control("Boxsaisie"));
    Btgo_ = qobject_cast<QPushButton*>(Control("Btgo"));
    CmdSolution_ = qobject_cast<QPushButton*>(Control("CmdSolution"));
    btEncore_ = qobject_cast<QPushButton*>(Control("btEncore"));
    Btquitter_ = qobject_cast<QPushButton*>(Control("Btquitter"));
    Resultat_ = qobject_cast<QLabel*>(Control("Resultat"));
    Coup_ = qobject_cast<QLabel*>(Control("Coup"));
    Label4_ = qobject_cast<QLabel*>(Control("Label4"));
    Label3_[0] = qobject_cast<QLabel*>(Control("Label3(0)"));
    Label3_[1] = qobject_cast<QLabel*>(Control("Label3(1)"));

    Boxsaisie_->setMaxLength(kMaxProposalLength);
    Boxsaisie_->setAccessibleName(Boxsaisie_->toolTip());
    Boxsaisie_->installEventFilter(this);
    connect(Boxsaisie_, &QLineEdit::textChanged, this, &Form1::Boxsaisie_Change);

    Btgo_->setDefault(true);
    connect(Btgo_, &QPushButton::clicked, this, &Form1::Btgo_Click);
    connect(CmdSolution_, &QPushButton::clicked, this, &Form1::CmdSolution_Click);
    connect(btEncore_, &QPushButton::clicked, this, &Form1::btEncore_Click);
    connect(Btquitter_, &QPushButton::clicked, this, &Form1::Btquitter_Click);

    Option1_ = new QButtonGroup(this);
    for (int i = 0; i < static_cast<int>(kLevels.size()); ++i) {
        Option1_->addButton(qobject_cast<QRadioButton*>(Control(OptionName(i).toStdString())), i);
    }
    connect(Option1_, &QButtonGroup::idToggled, this, [this](int index, bool checked) {
        if (checked) Option1_Click(index);
    });

    const struct {
        const char* name;
        const char* picture;
        const char* description;
    } faces[] = {{"Image1", ":/icons/sourire.svg", "Visage souriant : nombres trouvés"},
                 {"Image2", ":/icons/grimace.svg", "Visage triste : nombres ratés"}};
    for (const auto& face : faces) {
        auto* image = qobject_cast<QLabel*>(Control(face.name));
        image->setPixmap(
            SvgPixmap(QString::fromLatin1(face.picture), QSize(32, 32), devicePixelRatioF()));
        image->setAccessibleName(QString::fromUtf8(face.description));
    }
    // The rule is written in black whatever the desktop's text colour.
    QPalette rule = Control("Regle")->palette();
    rule.setColor(QPalette::WindowText, Qt::black);
    Control("Regle")->setPalette(rule);

    Label3_[0]->setAccessibleDescription(QStringLiteral("Nombres trouvés"));
    Label3_[1]->setAccessibleDescription(QStringLiteral("Nombres ratés"));
    Label4_->setAccessibleDescription(QStringLiteral("Moyenne"));
}

void Form1::Form_Load() {
    game_.Form_Load();
    ShowControls();
    ensurePolished();
    designSize_ = QSize(kClientSize.width(), kClientSize.height() + menuBar()->sizeHint().height());
    resize(designSize_);
    const QSize outer = OuterSize();
    layout_.SetPreviousSize(outer.width() * kTwipsPerPixel, outer.height() * kTwipsPerPixel);
    CentreOnScreen(this);
}

QSize Form1::OuterSize() const {
    // The window without the desktop's decorations: they do not scale with the window, and
    // their size is known only once the window is on screen.
    return size();
}

void Form1::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    GiveFocusToBox();
    // Once per load: a window restored or shown again stays where the player put it.
    CentreOnFirstShow(this);
}

void Form1::HandOver() {
    game_.HandOver();
    ShowControls();
}

void Form1::ShowControls() {
    const Form1Controls& shown = game_.Controls();
    if (Boxsaisie_->text().toStdString() != shown.Boxsaisie) {
        const QSignalBlocker block(Boxsaisie_);
        Boxsaisie_->setText(FromUtf8(shown.Boxsaisie));
    }
    Resultat_->setText(FromUtf8(shown.Resultat));
    Resultat_->setVisible(shown.ResultatVisible);
    Coup_->setText(FromUtf8(shown.Coup));
    Label3_[0]->setText(FromUtf8(shown.Label3[0]));
    Label3_[1]->setText(FromUtf8(shown.Label3[1]));
    Label4_->setText(FromUtf8(shown.Label4));
    if (QAbstractButton* option = Option1_->button(shown.Option1); option && !option->isChecked()) {
        const QSignalBlocker block(Option1_);
        option->setChecked(true);
    }
    Btgo_->setEnabled(shown.BtgoEnabled);
    CmdSolution_->setEnabled(shown.CmdSolutionEnabled);
    btEncore_->setVisible(shown.btEncoreVisible);
}

void Form1::GiveFocusToBox() {
    // Before the window is on screen this does nothing, and that is fine.
    if (Boxsaisie_->isVisible()) Boxsaisie_->setFocus(Qt::OtherFocusReason);
}

void Form1::Option1_Click(int index) {
    game_.ChooseLevel(index);
    ShowControls();
    GiveFocusToBox();
}

void Form1::Btgo_Click() {
    const Proposal proposal = game_.Btgo_Click();
    if (proposal == Proposal::Empty || proposal == Proposal::NotANumber) {
        QMessageBox box(QMessageBox::NoIcon, FromUtf8(kForm1Caption),
                        QStringLiteral("Propose un nombre !!!!"), QMessageBox::Ok, this);
        box.exec();
    }
    ShowControls();
    GiveFocusToBox();
    if (game_.HandOverDue()) emit tenthNumberFound();
}

void Form1::CmdSolution_Click() {
    game_.CmdSolution_Click();
    ShowControls();
    GiveFocusToBox();
}

void Form1::btEncore_Click() {
    game_.btEncore_Click();
    ShowControls();
    GiveFocusToBox();
}

void Form1::Btquitter_Click() {
    close();
}

void Form1::Quitter_Click() {
    close();
}

void Form1::Boxsaisie_Change() {
    game_.Boxsaisie_Change(Boxsaisie_->text().toStdString());
    CmdSolution_->setEnabled(game_.Controls().CmdSolutionEnabled);
}

bool Form1::Boxsaisie_KeyPress(QKeyEvent* event) {
    // Keys that type nothing (arrows, Delete, Tab) and the window's own keys pass untouched.
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Delete:
            return false;
        default:
            break;
    }
    const QString typed = event->text();
    if (typed.isEmpty()) return false;
    const QString admitted = Boxsaisie_Admitted(typed);
    if (admitted == typed) return false;
    if (!admitted.isEmpty()) Boxsaisie_->insert(admitted);
    return true;
}

void Form1::Boxsaisie_InputMethod(QInputMethodEvent* event) {
    // A dead key or a compose sequence commits its text without any key press: that text is
    // typed all the same. The composing text shown meanwhile is not part of the box's text and
    // is left to the box.
    const QString typed = event->commitString();
    if (typed.isEmpty()) return;
    const QString admitted =
        Boxsaisie_Admitted(typed, event->replacementStart(), event->replacementLength());
    if (admitted == typed) return;
    // Refused altogether, the commit leaves the box as it was, as a refused key does: the text
    // it was to replace stays.
    if (admitted.isEmpty()) {
        event->setCommitString(QString());
    } else {
        event->setCommitString(admitted, event->replacementStart(), event->replacementLength());
    }
}

QString Form1::Boxsaisie_Admitted(const QString& typed, int replaceFrom, int replaceLength) const {
    // The rules judge each character against what stays in the box: the selection and the text
    // an input method replaces are gone by then, and the characters admitted before count.
    QString kept = Boxsaisie_->text();
    int cursor = Boxsaisie_->cursorPosition();
    if (Boxsaisie_->hasSelectedText()) {
        cursor = Boxsaisie_->selectionStart();
        kept.remove(cursor, Boxsaisie_->selectionLength());
    }
    if (replaceLength > 0) {
        kept.remove(std::clamp(cursor + replaceFrom, 0, static_cast<int>(kept.size())),
                    replaceLength);
    }
    // The box's maximum length then cuts what does not fit.
    QString admitted;
    for (const QChar character : typed) {
        const char16_t key = game_.Boxsaisie_KeyPress(character.unicode(), kept.toStdString());
        if (key == 0) continue;
        kept += QChar(key);
        admitted += QChar(key);
    }
    return admitted;
}

bool Form1::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Boxsaisie_) {
        if (event->type() == QEvent::KeyPress) {
            return Boxsaisie_KeyPress(static_cast<QKeyEvent*>(event));
        }
        if (event->type() == QEvent::InputMethod) {
            Boxsaisie_InputMethod(static_cast<QInputMethodEvent*>(event));
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void Form1::keyPressEvent(QKeyEvent* event) {
    // Enter clicks the focused button, or else "Go!"; Escape clicks "Quitter".
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* focused = qobject_cast<QPushButton*>(focusWidget())) {
                focused->click();
            } else if (Btgo_->isEnabled()) {
                Btgo_->click();
            }
            return;
        case Qt::Key_Escape:
            Btquitter_->click();
            return;
        default:
            QMainWindow::keyPressEvent(event);
    }
}

void Form1::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    Form_Resize();
    // The border is fixed: only maximising changes the size. The desktop must still see a
    // resizable window, or it would not offer to maximise it, so a size the player drags
    // is undone here. A tiling desktop that keeps imposing its size is let be.
    if (size() == designSize_) sizesUndone_ = 0;
    if (!designSize_.isEmpty() && size() != designSize_ && sizesUndone_ < 3) {
        QTimer::singleShot(0, this, [this] {
            const auto sized = Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized;
            if (!(windowState() & sized) && size() != designSize_) {
                ++sizesUndone_;
                resize(designSize_);
            }
        });
    }
}

void Form1::Form_Resize() {
    const QSize outer = OuterSize();
    if (layout_.Form_Resize(outer.width() * kTwipsPerPixel, outer.height() * kTwipsPerPixel,
                            isMinimized())) {
        ApplyPlaces();
    }
}

void Form1::ApplyPlaces() {
    for (const auto& [name, place] : layout_.Places()) {
        if (QWidget* widget = Control(name)) widget->setGeometry(ToPixels(place));
    }
}

}  // namespace mirvalde
