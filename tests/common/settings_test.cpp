#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <csignal>
#include <functional>

#include "QtSettingsStore.h"

namespace mirvalde {
namespace {

// The store named after the program, written and read back as another run would.
class QtSettingsStoreTest : public ::testing::Test {
  protected:
    void SetUp() override {
        // The test runner points the configuration folder at a temporary one.
        ASSERT_TRUE(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                        .startsWith(QDir::tempPath()));
        QFile::remove(QtSettingsStore(kName).FileName());
    }
    const QString kName = QStringLiteral("mirvalde-settings-test");
};

// Values written by hand or by another run; a comma typed without quotes makes a list of a
// name, which is still one name. Generated files are checked by the settings fuzz target.
TEST_F(QtSettingsStoreTest, KeepsValuesBetweenRunsAndReadsAHandWrittenNameWhole) {
    {
        QFile file(QtSettingsStore(kName).FileName());
        QDir().mkpath(QFileInfo(file).path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Meilleur%20Score]\nNom=Dupont, Jean\nScore=beaucoup\n");
    }
    QtSettingsStore store(kName);
    EXPECT_EQ(store.Read("Meilleur Score", "Nom", "Anonyme"), "Dupont, Jean");
    EXPECT_EQ(store.ReadNumber("Meilleur Score", "Score", 10), 10);
    EXPECT_TRUE(store.Write("Meilleur Score", "Score", "120"));
    EXPECT_EQ(QtSettingsStore(kName).ReadNumber("Meilleur Score", "Score", 10), 120);
    EXPECT_TRUE(store.FileName().endsWith(kName + u'/' + kName + QStringLiteral(".conf")));
}

// A best score stored, then a new one that the store cannot write: the store says so, the file
// is unchanged, and what the game reads next is the best stored before.
void ExpectARefusedWriteKeepsTheStoredBest(const QString& name,
                                           const std::function<bool()>& writeRefused) {
    ASSERT_TRUE(QtSettingsStore(name).Write("Meilleur Score", "Nom", "Éloïse"));
    ASSERT_TRUE(QtSettingsStore(name).Write("Meilleur Score", "Score", "120"));
    QFile file(QtSettingsStore(name).FileName());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();

    EXPECT_TRUE(writeRefused());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
    file.close();
    EXPECT_EQ(QtSettingsStore(name).Read("Meilleur Score", "Nom", ""), "Éloïse");
    EXPECT_EQ(QtSettingsStore(name).ReadNumber("Meilleur Score", "Score", 0), 120);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

#ifdef RLIMIT_FSIZE
TEST_F(QtSettingsStoreTest, AFullDiskLeavesTheStoredBestWhole) {
    ExpectARefusedWriteKeepsTheStoredBest(kName, [this] {
        // Files may not grow past a few bytes, which even root cannot get round.
        rlimit old{};
        getrlimit(RLIMIT_FSIZE, &old);
        const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit tiny = old;
        tiny.rlim_cur = 8;
        setrlimit(RLIMIT_FSIZE, &tiny);
        const bool written = QtSettingsStore(kName).Write("Meilleur Score", "Score", "999");
        setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, oldHandler);
        return !written;
    });
}
#endif

// A read-only folder, or a file that cannot be read (left by another user, say), which a
// write would replace with none of what it holds. Root reads and writes anywhere: CTest runs
// this test again as an ordinary user.
TEST_F(QtSettingsStoreTest, AReadOnlyFolderOrAnUnreadableFileKeepsTheStoredBestWhole) {
    if (geteuid() == 0) GTEST_SKIP() << "root reads and writes anywhere";
    const QString file = QtSettingsStore(kName).FileName();
    for (const QString& locked : {QFileInfo(file).absolutePath(), file}) {
        ExpectARefusedWriteKeepsTheStoredBest(kName, [&] {
            const auto mode = QFile::permissions(locked);
            QFile::setPermissions(
                locked, locked == file ? QFile::Permissions() : QFile::ReadOwner | QFile::ExeOwner);
            const bool written = QtSettingsStore(kName).Write("Meilleur Score", "Score", "999");
            QFile::setPermissions(locked, mode);
            return !written;
        });
    }
}

}  // namespace
}  // namespace mirvalde
