#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "QtSound.h"

namespace mirvalde {
namespace {

TEST(QtSoundTest, AMissingFileRingsTheBeepAndAPresentOneDoesNot) {
    int beeps = 0;
    QtSound sound([&beeps] { ++beeps; });
    QTemporaryDir folder;
    sound.Play(QDir(folder.path()).filePath("absent.wav").toStdString());
    EXPECT_EQ(beeps, 1);
    sound.Play(folder.path().toStdString());  // a folder is no sound either
    EXPECT_EQ(beeps, 2);

    sound.Play(MIRVALDE_GAME_DIR "/gagner.wav");
    sound.Play(MIRVALDE_GAME_DIR "/perdu.wav");  // cuts the first
    sound.Play(MIRVALDE_GAME_DIR "/perdu.wav");
    EXPECT_EQ(beeps, 2);
    EXPECT_TRUE(QTest::qWaitFor([&sound] { return sound.Loaded(); }, 5000));
}

}  // namespace
}  // namespace mirvalde
