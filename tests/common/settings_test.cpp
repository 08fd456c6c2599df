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

TEST(ParseWholeNumberTest, AcceptsOnlyWholeNumbersThatFit) {
    std::int32_t n = -1;
    EXPECT_TRUE(ParseWholeNumber("120", n));
    EXPECT_EQ(n, 120);
    EXPECT_TRUE(ParseWholeNumber(" +7 ", n));
    EXPECT_EQ(n, 7);
    EXPECT_TRUE(ParseWholeNumber("-3", n));
    EXPECT_EQ(n, -3);
    for (const char* bad : {"", " ", "abc", "12abc", "1.5", "99999999999", "1 2", "--1", "+-1"}) {
        EXPECT_FALSE(ParseWholeNumber(bad, n)) << '"' << bad << '"';
    }
}

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

TEST_F(QtSettingsStoreTest, KeepsValuesBetweenRunsAndGivesDefaultsForMissingOnes) {
    {
        QtSettingsStore store(kName);
        EXPECT_EQ(store.Read("Meilleur Score", "Nom", "Anonyme"), "Anonyme");
        EXPECT_EQ(store.ReadNumber("Meilleur Score", "Score", 10), 10);
        EXPECT_TRUE(store.Write("Meilleur Score", "Nom", "Éloïse"));
        EXPECT_TRUE(store.Write("Meilleur Score", "Score", "120"));
    }
    QtSettingsStore again(kName);
    EXPECT_EQ(again.Read("Meilleur Score", "Nom", "Anonyme"), "Éloïse");
    EXPECT_EQ(again.ReadNumber("Meilleur Score", "Score", 10), 120);
    EXPECT_TRUE(again.FileName().endsWith(kName + u'/' + kName + QStringLiteral(".conf")));
}

TEST_F(QtSettingsStoreTest, AHandEditedValueThatIsNoNumberFallsBackToTheDefault) {
    {
        QFile file(QtSettingsStore(kName).FileName());
        QDir().mkpath(QFileInfo(file).path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Meilleur%20Score]\nNom=Dupont, Jean\n");
    }
    EXPECT_EQ(QtSettingsStore(kName).Read("Meilleur Score", "Nom", "Anonyme"), "Dupont, Jean");
    QtSettingsStore store(kName);
    ASSERT_TRUE(store.Write("Meilleur Score", "Score", "beaucoup"));
    EXPECT_EQ(store.ReadNumber("Meilleur Score", "Score", 10), 10);
    EXPECT_EQ(store.Read("Meilleur Score", "Score", "10"), "beaucoup");
}

// A settings file of garbage: the game reads its defaults, and the next best is stored whole.
TEST_F(QtSettingsStoreTest, AFileOfGarbageGivesTheDefaultsAndTakesTheNextBest) {
    {
        QFile file(QtSettingsStore(kName).FileName());
        QDir().mkpath(QFileInfo(file).path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("\x00\xff[[=\n\x7f=@Variant(\x01)\r\n[Meilleur Score\n", 33));
    }
    QtSettingsStore store(kName);
    EXPECT_EQ(store.Read("Meilleur Score", "Nom", "Anonyme"), "Anonyme");
    EXPECT_EQ(store.ReadNumber("Meilleur Score", "Score", 10), 10);
    EXPECT_TRUE(store.Write("Meilleur Score", "Nom", "Éloïse"));
    EXPECT_TRUE(store.Write("Meilleur Score", "Score", "120"));
    EXPECT_EQ(QtSettingsStore(kName).Read("Meilleur Score", "Nom", "Anonyme"), "Éloïse");
    EXPECT_EQ(QtSettingsStore(kName).ReadNumber("Meilleur Score", "Score", 10), 120);
}

// A best player's name is whatever the player typed: it must come back to the letter.
TEST_F(QtSettingsStoreTest, NamesWithAnyCharactersComeBackUnchanged) {
    const std::string names[] = {
        "<b>x</b>", "a=b",         "[Meilleur Score]", "100 %", "\"dit\" ; # ",
        "a,b",      "@Variant(x)", "Zoé\\Noël",        "  ",    std::string(200, 'w') + "é"};
    for (const std::string& name : names) {
        ASSERT_TRUE(QtSettingsStore(kName).Write("Meilleur Score", "Nom", name));
        EXPECT_EQ(QtSettingsStore(kName).Read("Meilleur Score", "Nom", "Anonyme"), name);
    }
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
