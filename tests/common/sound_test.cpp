#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>

#include "ModuleSound.h"
#include "QtSound.h"

namespace mirvalde {
namespace {

TEST(QtSoundTest, AMissingFileRingsTheBeepAndAPresentOneDoesNot) {
    int beeps = 0;
    QtSound sound([&beeps] { ++beeps; });
    QTemporaryDir folder;
    sound.Play(folder.filePath("absent.wav").toStdString());
    sound.Play(folder.path().toStdString());  // a folder is no sound either
    EXPECT_EQ(beeps, 2);
    sound.Play(MIRVALDE_GAME_DIR "/gagner.wav");
    sound.Play(MIRVALDE_GAME_DIR "/perdu.wav");  // cuts the first
    EXPECT_EQ(beeps, 2);
    EXPECT_TRUE(QTest::qWaitFor([&sound] { return sound.Loaded(); }, 5000));
}

// The game's own module plays what it is given and beeps through the game's beep; without the
// module, every sound is a beep and nothing else fails.
TEST(ModuleSoundTest, PlaysThroughTheModuleOrBeepsWithoutIt) {
    int beeps = 0;
    ModuleSound sound(MIRVALDE_GAME_DIR "/mirvalde_sound", [&beeps] { ++beeps; });
    ASSERT_TRUE(sound.Load());
    sound.Play(MIRVALDE_GAME_DIR "/gagner.wav");
    EXPECT_EQ(beeps, 0);
    sound.Play(MIRVALDE_GAME_DIR "/absent.wav");
    EXPECT_EQ(beeps, 1);

    QTemporaryDir folder;
    ModuleSound missing(folder.filePath("mirvalde_sound"), [&beeps] { ++beeps; });
    missing.Play(MIRVALDE_GAME_DIR "/gagner.wav");
    EXPECT_FALSE(missing.Load());
    EXPECT_EQ(beeps, 2);
    QTest::qWait(200);  // lets the module's player finish reading the file it was given
}

}  // namespace
}  // namespace mirvalde
