#include <gtest/gtest.h>

#include <sys/resource.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

#include "QtSettingsStore.h"

namespace mirvalde {
namespace {

// The store named after the program, written and read back as another run would.
class QtSettingsStoreTest : public ::testing::Test {
  protected:
    // The test runner points the configuration folder at a temporary one.
    void SetUp() override { ASSERT_TRUE(file.fileName().startsWith(QDir::tempPath())); }
    const QString kName = QStringLiteral("mirvalde-settings-test");
    QFile file{QtSettingsStore(kName).FileName()};
};

// Values written by hand or by another run; a comma typed without quotes makes a list of a
// name, which is still one name. Generated files are checked by the settings fuzz target.
TEST_F(QtSettingsStoreTest, KeepsValuesBetweenRunsAndReadsAHandWrittenNameWhole) {
    EXPECT_TRUE(file.fileName().endsWith(kName + u'/' + kName + QStringLiteral(".conf")));
    QDir().mkpath(QFileInfo(file).path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Meilleur%20Score]\nNom=Dupont, Jean\nScore=beaucoup\n");
    file.close();
    QtSettingsStore store(kName);
    EXPECT_EQ(store.Read("Meilleur Score", "Nom", "Anonyme"), "Dupont, Jean");
    EXPECT_EQ(store.ReadNumber("Meilleur Score", "Score", 10), 10);
    EXPECT_TRUE(store.Write("Meilleur Score", "Score", "120"));
    EXPECT_EQ(QtSettingsStore(kName).ReadNumber("Meilleur Score", "Score", 10), 120);
}

// A best score stored, then a new one that a full disk refuses: the store says so, the file
// is unchanged, and what the game reads next is the best stored before.
TEST_F(QtSettingsStoreTest, AFullDiskLeavesTheStoredBestWhole) {
    ASSERT_TRUE(QtSettingsStore(kName).Write("Meilleur Score", "Nom", "Éloïse"));
    ASSERT_TRUE(QtSettingsStore(kName).Write("Meilleur Score", "Score", "120"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();

    // Files may not grow past a few bytes, which even root cannot get round.
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit tiny{8, old.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);  // a write past the limit fails rather than ends the test
    setrlimit(RLIMIT_FSIZE, &tiny);
    const bool written = QtSettingsStore(kName).Write("Meilleur Score", "Score", "999");
    setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_FALSE(written);

    EXPECT_EQ(QtSettingsStore(kName).Read("Meilleur Score", "Nom", ""), "Éloïse");
    EXPECT_EQ(QtSettingsStore(kName).ReadNumber("Meilleur Score", "Score", 0), 120);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

}  // namespace
}  // namespace mirvalde
