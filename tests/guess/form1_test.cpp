#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "Fakes.h"
#include "Form1.h"
#include "QtPrinters.h"
#include "Stacking.h"

namespace mirvalde {
namespace {

// The main window driven as a player drives it: real keys and clicks, captions read back.
class Form1Test : public ::testing::Test {
  protected:
    void SetUp() override { Load(); }
    void TearDown() override { delete window; }
    void Load() {
        window = new Form1(game);
        window->Form_Load();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }

    QWidget* Find(const char* name) const { return window->Control(name); }
    QLineEdit* Box() const { return qobject_cast<QLineEdit*>(Find("Boxsaisie")); }
    // The answer, the numbers found and missed, the tries and the average.
    QString Shown() const {
        QStringList shown;
        for (const char* name : {"Resultat", "Label3(0)", "Label3(1)", "Coup", "Label4"})
            shown << qobject_cast<QLabel*>(Find(name))->text();
        return shown.join(u'|');
    }
    void Type(const QString& keys) { QTest::keyClicks(Box(), keys); }
    void Enter() { QTest::keyClick(Box(), Qt::Key_Return); }

    testing::ScriptedRandom random{};  // 0.5 at every draw: level 0 draws 51
    testing::FakeClock clock;
    testing::RecordingSound sound;
    GuessGame game{random, clock, sound, {"found.wav", "missed.wav"}, ','};
    QPointer<Form1> window;
};

// Typed, committed by an input method (a dead key, a compose sequence) or pasted, only digits
// and one separator in the player's notation reach the box, up to its length. What a key or a
// commit replaces (a selection, or the text the input method gives back) no longer counts.
TEST_F(Form1Test, TheBoxTakesOnlyDigitsAndOneSeparatorInThePlayersNotation) {
    // The box keeps taking the input method, or digits could not be typed through it.
    QInputMethodQueryEvent query(Qt::ImEnabled);
    QApplication::sendEvent(Box(), &query);
    EXPECT_TRUE(query.value(Qt::ImEnabled).toBool());
    // clang-format off
    const struct { const char* before; bool selected; char how; const char* text; int from, length;
                   const char* after; } cases[] = {
        {"", false, 't', "5a2.0,1 -+x", 0, 0, "52,01"},   // typed
        {"", false, 'c', "1.2,3x", 0, 0, "1,23"},         // committed
        {"5,2", true, 'c', "7.1", 0, 0, "7,1"},
        {"7,1", false, 'c', ".9", -2, 2, "7,9"},
        {"7,9", false, 'c', "é", -1, 1, "7,9"},           // refused, it replaces nothing either
        {"12345678", false, 'c', "9,5", 0, 0, "123456789"},
        {"", false, 'p', "abc", 0, 0, ""},                // pasted with Ctrl+V
    };
    // clang-format on
    for (const auto& c : cases) {
        Box()->setText(QString::fromUtf8(c.before));
        if (c.selected) Box()->selectAll();
        const QString text = QString::fromUtf8(c.text);
        QInputMethodEvent commit;
        commit.setCommitString(text, c.from, c.length);
        QApplication::clipboard()->setText(text);
        if (c.how == 't') Type(text);
        if (c.how == 'c') QApplication::sendEvent(Box(), &commit);
        if (c.how == 'p') QTest::keyClick(Box(), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Box()->text(), QString::fromUtf8(c.after)) << c.before << " + " << c.text;
    }
}

// Enter clicks the focused button, or else "Go!"; every click gives the focus back to the box.
// An empty proposal, or one with no digit, is answered by a message, and still counted.
TEST_F(Form1Test, ProposalsButtonsAndLevelsWorkWithTheMouseOrEnter) {
    for (const char* proposal : {"", ","}) {
        QString message;
        QTimer::singleShot(0, window, [&message] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                message = box->windowTitle() + u'|' + box->text();
                box->button(QMessageBox::Ok)->click();
            }
        });
        Type(proposal + QStringLiteral("\r"));
        EXPECT_EQ(message, "Mirvalde|Propose un nombre !!!!") << proposal;
    }
    EXPECT_EQ(Shown(), "Comparaison|0|0|Nombre de coups joués : 2|");
    EXPECT_TRUE(Find("Resultat")->isVisible());
    QTest::mouseClick(Find("Option1(3)"), Qt::LeftButton);
    EXPECT_EQ(window->focusWidget(), Box());
    Type("7");
    Find("CmdSolution")->setFocus();
    QTest::keyClick(Find("CmdSolution"), Qt::Key_Return);
    EXPECT_EQ(Shown(), " 550 000 est la bonne réponse.|0|1|Nombre de coups joués : 1|");
    Type("550000");
    Enter();
    EXPECT_EQ(Shown(),
              " 550 000 est la bonne réponse.|1|1|Nombre de coups joués : 3|"
              "Tu trouves en 2 fois, en moyenne.");
    EXPECT_TRUE(!Find("Btgo")->isEnabled() && Find("btEncore")->isVisible());
    // The rule's label overlaps "Encore ?", and must stay beneath it.
    EXPECT_EQ(testing::CoveredControls(window), QStringList{});
    QTest::mouseClick(Find("btEncore"), Qt::LeftButton);
    EXPECT_EQ(Shown(), "|1|1|Nombre de coups joués : 0|Tu trouves en 2 fois, en moyenne.");
    EXPECT_TRUE(Find("Btgo")->isEnabled() && !Find("btEncore")->isVisible());
    EXPECT_EQ(window->focusWidget(), Box());
}

// Escape is "Quitter" whatever the box holds. The game outlives its window: a new load keeps
// the counts.
TEST_F(Form1Test, EscapeTheButtonAndTheMenuAllUnloadTheWindow) {
    for (int way = 0; way < 3; ++way) {
        Type("3\r4");  // a miss, then a number left in the box
        if (way == 0) QTest::keyClick(Box(), Qt::Key_Escape);
        if (way == 1) QTest::mouseClick(Find("Btquitter"), Qt::LeftButton);
        if (way == 2) window->findChild<QAction*>("Quitter")->trigger();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(window.isNull()) << way;
        Load();
    }
    EXPECT_EQ(game.Module().NbRates, 3);
}

}  // namespace
}  // namespace mirvalde
