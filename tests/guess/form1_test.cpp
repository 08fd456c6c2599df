#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "Fakes.h"
#include "Form1.h"
#include "QtPrinters.h"
#include "Stacking.h"

namespace mirvalde {
namespace {

using testing::FakeClock;
using testing::RecordingSound;
using testing::ScriptedRandom;

// The main window driven as a player drives it: real keys and clicks, captions read back.
class Form1Test : public ::testing::Test {
  protected:
    void SetUp() override { Load(); }

    void Load() {
        window = new Form1(game);
        window->Form_Load();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }

    template <typename T = QWidget>
    T* Find(const char* name) const {
        return qobject_cast<T*>(window->Control(name));
    }
    QLineEdit* Box() const { return Find<QLineEdit>("Boxsaisie"); }
    QString Caption(const char* name) const { return Find<QLabel>(name)->text(); }

    void Type(const QString& keys) { QTest::keyClicks(Box(), keys); }
    // Text as the desktop's input method delivers it: composed, then committed at once.
    void Compose(const QString& preedit) {
        QInputMethodEvent event(preedit, {});
        QApplication::sendEvent(Box(), &event);
    }
    void Commit(const QString& text, int replaceFrom = 0, int replaceLength = 0) {
        QInputMethodEvent event;
        event.setCommitString(text, replaceFrom, replaceLength);
        QApplication::sendEvent(Box(), &event);
    }
    void Enter() { QTest::keyClick(Box(), Qt::Key_Return); }
    // A message box is modal: it is answered as soon as it opens, and its text returned.
    QString EnterAndAnswerMessage() {
        QString text;
        QTimer::singleShot(0, window, [&text] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                text = box->windowTitle() + u'|' + box->text();
                box->button(QMessageBox::Ok)->click();
            }
        });
        Enter();
        return text;
    }

    ScriptedRandom random{};  // 0.5 at every draw: level 0 draws 51
    FakeClock clock;
    RecordingSound sound;
    GuessGame game{random, clock, sound, {"found.wav", "missed.wav"}, ','};
    QPointer<Form1> window;

    void TearDown() override { delete window; }
};

// What the rules decide reaches every label and button.
TEST_F(Form1Test, TypedProposalsAreJudgedWithEnterAndShown) {
    EXPECT_EQ(window->focusWidget(), Box());
    Type("50");
    EXPECT_TRUE(Find<QPushButton>("CmdSolution")->isEnabled());
    Enter();
    EXPECT_EQ(Caption("Resultat"), "  50 est trop petit.");
    EXPECT_TRUE(Find<QLabel>("Resultat")->isVisible());
    EXPECT_EQ(Box()->text(), "");
    Type("51");
    Enter();
    EXPECT_EQ(Caption("Resultat"), "  51 est la bonne réponse.");
    EXPECT_EQ(Caption("Coup"), "Nombre de coups joués : 2");
    EXPECT_EQ(Caption("Label3(0)") + Caption("Label3(1)"), "11");
    EXPECT_EQ(Caption("Label4"), "Tu trouves en 2 fois, en moyenne.");
    EXPECT_FALSE(Find<QPushButton>("Btgo")->isEnabled());
    EXPECT_TRUE(Find<QPushButton>("btEncore")->isVisible());
    // The rule's label overlaps "Encore ?", and must stay beneath it.
    EXPECT_EQ(testing::CoveredControls(window), QStringList{});
    EXPECT_EQ(sound.played, (std::vector<std::string>{"missed.wav", "found.wav"}));
}

TEST_F(Form1Test, AnEmptyProposalIsAnsweredByAMessageAndStillCounted) {
    EXPECT_EQ(EnterAndAnswerMessage(), "Mirvalde|Propose un nombre !!!!");
    EXPECT_EQ(Caption("Coup"), "Nombre de coups joués : 1");
    EXPECT_TRUE(Find<QLabel>("Resultat")->isVisible());
    EXPECT_EQ(Caption("Resultat"), "Comparaison");
    EXPECT_EQ(window->focusWidget(), Box());
}

TEST_F(Form1Test, TheBoxTakesOnlyDigitsAndOneSeparatorInThePlayersNotation) {
    Type("5a2.0,1 -+x");
    EXPECT_EQ(Box()->text(), "52,01");
    Box()->clear();
    Type("1234567890");
    EXPECT_EQ(Box()->text(), "123456789");
    QTest::keyClick(Box(), Qt::Key_Backspace);
    EXPECT_EQ(Box()->text(), "12345678");
    // A separator may replace a selection that holds the other one.
    Box()->setText("5,2");
    Box()->selectAll();
    Type(".");
    EXPECT_EQ(Box()->text(), ",");
}

// A dead key or a compose sequence commits its text without a key press.
TEST_F(Form1Test, TextAnInputMethodCommitsIsFilteredLikeTypedKeys) {
    // The box keeps taking the input method, or digits could not be typed through it.
    QInputMethodQueryEvent query(Qt::ImEnabled);
    QApplication::sendEvent(Box(), &query);
    EXPECT_TRUE(query.value(Qt::ImEnabled).toBool());

    Compose(QStringLiteral("^"));
    EXPECT_EQ(Box()->text(), "");
    Commit(QStringLiteral("ê"));
    EXPECT_EQ(Box()->text(), "");
    Compose(QStringLiteral("^"));
    Commit(QStringLiteral("5"));
    EXPECT_EQ(Box()->text(), "5");
    EXPECT_TRUE(Find<QPushButton>("CmdSolution")->isEnabled());
    Box()->clear();
    Commit(QStringLiteral("1,2,3"));
    EXPECT_EQ(Box()->text(), "1,23");
    Box()->clear();
    Commit(QStringLiteral("4.5x"));
    EXPECT_EQ(Box()->text(), "4,5");
}

TEST_F(Form1Test, CommittedTextReplacesWhatItShouldAndFitsTheBox) {
    // The separator of a selection the commit replaces no longer counts.
    Box()->setText("5,2");
    Box()->selectAll();
    Commit(QStringLiteral("7.1"));
    EXPECT_EQ(Box()->text(), "7,1");
    // Likewise for the text before the cursor that the input method replaces.
    Commit(QStringLiteral(".9"), -2, 2);
    EXPECT_EQ(Box()->text(), "7,9");
    // A refused commit leaves the text it was to replace.
    Commit(QStringLiteral("é"), -1, 1);
    EXPECT_EQ(Box()->text(), "7,9");

    Box()->setText("12345678");
    Commit(QStringLiteral("9,5"));
    EXPECT_EQ(Box()->text(), "123456789");
    Commit(QStringLiteral("0"));
    EXPECT_EQ(Box()->text(), "123456789");
}

TEST_F(Form1Test, ClipboardShortcutsDoNotPasteIntoTheBox) {
    QApplication::clipboard()->setText(QStringLiteral("abc"));
    QTest::keyClick(Box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Box()->text(), "");
}

TEST_F(Form1Test, ButtonsAndLevelsWorkWithTheMouseAndGiveTheFocusBack) {
    QTest::mouseClick(Find<QRadioButton>("Option1(3)"), Qt::LeftButton);
    EXPECT_EQ(game.Module().Niveau, 3);
    EXPECT_EQ(game.Module().Nombre, 550000);
    EXPECT_EQ(window->focusWidget(), Box());

    Type("550000");
    QTest::mouseClick(Find<QPushButton>("Btgo"), Qt::LeftButton);
    EXPECT_EQ(Caption("Resultat"), " 550 000 est la bonne réponse.");
    // Won: Enter no longer proposes anything until "Encore ?".
    Type("1");
    Enter();
    EXPECT_EQ(game.Module().NbCoups, 1);
    EXPECT_EQ(Box()->text(), "1");

    QTest::mouseClick(Find<QPushButton>("CmdSolution"), Qt::LeftButton);
    EXPECT_EQ(Caption("Resultat"), " 550 000 est la bonne réponse.");
    EXPECT_EQ(Caption("Label3(1)"), "1");
    EXPECT_EQ(Box()->text(), "");

    QTest::mouseClick(Find<QPushButton>("btEncore"), Qt::LeftButton);
    EXPECT_TRUE(Find<QPushButton>("Btgo")->isEnabled());
    EXPECT_FALSE(Find<QPushButton>("btEncore")->isVisible());
    EXPECT_EQ(Caption("Coup"), "Nombre de coups joués : 0");
    EXPECT_EQ(window->focusWidget(), Box());
}

TEST_F(Form1Test, EnterOnAFocusedButtonClicksThatButton) {
    Type("7");
    Find<QPushButton>("CmdSolution")->setFocus();
    QTest::keyClick(Find<QPushButton>("CmdSolution"), Qt::Key_Return);
    EXPECT_EQ(game.Module().NbRates, 1);
    EXPECT_EQ(game.Module().NbCoups, 0);
}

TEST_F(Form1Test, EscapeTheButtonAndTheMenuAllUnloadTheWindow) {
    Type("3");
    Enter();
    const auto unloaded = [this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.isNull();
    };
    QTest::keyClick(Box(), Qt::Key_Escape);
    EXPECT_TRUE(unloaded());

    Load();
    QTest::mouseClick(Find<QPushButton>("Btquitter"), Qt::LeftButton);
    EXPECT_TRUE(unloaded());

    Load();
    window->findChild<QAction*>("Quitter")->trigger();
    EXPECT_TRUE(unloaded());
    // The game outlives its window: a new load keeps the counts.
    Load();
    EXPECT_EQ(game.Module().NbRates, 1);
    EXPECT_EQ(game.Module().NbCoups, 1);
}

}  // namespace
}  // namespace mirvalde
