// The stored settings as a hand may have edited them.
// Input: the settings file's bytes. Its first line is also the best player's name written
// back, and every line is read as a whole number.
#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

#include "NumberFormat.h"
#include "QtSettingsStore.h"

namespace {

const QString kName = QStringLiteral("mirvalde-fuzz");
std::string settingsPath;

[[noreturn]] void Fail(const char* what, const std::string& text = {}) {
    std::fprintf(stderr, "settings_fuzz: %s [%s]\n", what, text.c_str());
    std::abort();
}

// Blanks, an optional sign, digits, blanks: the value if it fits in 32 bits.
std::optional<std::int32_t> WholeNumber(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return std::nullopt;
    std::string core = text.substr(first, text.find_last_not_of(" \t") + 1 - first);
    const bool negative = core[0] == '-';
    if (core[0] == '+' || negative) core.erase(0, 1);
    core.erase(0, std::min(core.find_first_not_of('0'), core.size() - 1));
    if (core.empty() || core.size() > 10 ||
        core.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    const std::int64_t value = (negative ? -1 : 1) * std::stoll(core);
    if (value != static_cast<std::int32_t>(value)) return std::nullopt;
    return static_cast<std::int32_t>(value);
}

void CheckParse(const std::string& text) {
    std::int32_t parsed = 12345;
    const auto expected = WholeNumber(text);
    if (mirvalde::ParseWholeNumber(text, parsed) != expected.has_value() ||
        parsed != expected.value_or(12345)) {
        Fail("a whole number parsed wrong", text);
    }
}

// The value read, a missing one giving the fallback; a number only where the text is one.
void CheckRead(const mirvalde::SettingsStore& store, const std::string& section,
               const std::string& key) {
    const std::string a = store.Read(section, key, "?a");
    const std::string b = store.Read(section, key, "?b");
    if (a != b && (a != "?a" || b != "?b")) Fail("the fallback leaks into a value", key);
    const auto number = a == b ? WholeNumber(a) : std::nullopt;
    if (store.ReadNumber(section, key, 10) != number.value_or(10)) Fail("a number read wrong", a);
}

// The store reads its file again only when its size or time changed: each write here gets a
// time of its own.
void Touch() {
    static long run = 0;
    std::filesystem::last_write_time(
        settingsPath, std::filesystem::file_time_type{} + std::chrono::seconds(++run));
}

}  // namespace

// Qt's own serialised values in a hand-edited file ("@Variant(...)") may announce billions of
// entries, for which Qt reserves room first. The game gets address space it never touches, or
// a null pointer that Qt copes with; AddressSanitizer would back it all with shadow memory and
// pass the fuzzer's memory limit. Refusing such sizes, as a full machine would, is closer.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=1024";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // A private configuration folder, never the user's.
    static const QTemporaryDir config(QDir::tempPath() + QStringLiteral("/mirvalde-fuzz-XXXXXX"));
    qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
    settingsPath = mirvalde::QtSettingsStore(kName).FileName().toStdString();
    if (!config.isValid() || !settingsPath.starts_with(config.path().toStdString()))
        Fail("settings outside a temporary folder", settingsPath);
    QDir().mkpath(QFileInfo(QString::fromStdString(settingsPath)).path());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    CheckParse(bytes);
    std::istringstream stream(bytes);
    for (std::string line; std::getline(stream, line);) CheckParse(line);

    std::ofstream(settingsPath, std::ios::binary) << bytes;
    Touch();

    mirvalde::QtSettingsStore store(kName);
    CheckRead(store, "Meilleur Score", "Nom");
    CheckRead(store, "Meilleur Score", "Score");
    CheckRead(store, "Options", "Show Tips at Startup");

    // The best player's name and score, written over whatever the file held, read back as they
    // were written.
    const std::string name = bytes.substr(0, bytes.find('\n'));
    const bool utf8 = QString::fromStdString(name).toStdString() == name;
    if (utf8 && store.Write("Meilleur Score", "Nom", name) &&
        store.Write("Meilleur Score", "Score", mirvalde::Digits(static_cast<std::int64_t>(size)))) {
        Touch();
        if (store.Read("Meilleur Score", "Nom", "?") != name) Fail("the name changes", name);
        if (store.ReadNumber("Meilleur Score", "Score", -1) != static_cast<std::int32_t>(size))
            Fail("the score changes");
    }
    return 0;
}
