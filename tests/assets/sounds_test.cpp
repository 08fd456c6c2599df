// Checks the generated sounds for what a player would actually hear go wrong: a file the
// audio backend rejects, a sound too long or silent, clipping, clicks, or swapped feedback.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Wav {
    std::uint32_t format = 0, channels = 0, blockAlign = 0, bitsPerSample = 0;
    std::uint32_t sampleRate = 0, byteRate = 0, riffSize = 0;
    std::size_t fileSize = 0;
    std::vector<std::int16_t> samples;

    double seconds() const { return static_cast<double>(samples.size()) / sampleRate; }
};

std::uint32_t littleEndian(const std::string& bytes, std::size_t at, int width) {
    std::uint32_t value = 0;
    for (int i = width - 1; i >= 0; --i) {
        value = (value << 8) | static_cast<unsigned char>(bytes.at(at + i));
    }
    return value;
}

// Walks the chunks rather than assuming a fixed 44-byte header, and refuses any chunk that
// claims more bytes than the file holds.
Wav readWav(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot open " + path.string());
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (bytes.size() < 12 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0) {
        throw std::runtime_error("not a RIFF/WAVE file");
    }
    Wav wav;
    wav.fileSize = bytes.size();
    wav.riffSize = littleEndian(bytes, 4, 4);
    bool haveFormat = false, haveData = false;
    for (std::size_t at = 12; at + 8 <= bytes.size();) {
        const std::string id = bytes.substr(at, 4);
        const std::size_t size = littleEndian(bytes, at + 4, 4);
        const std::size_t body = at + 8;
        if (body + size > bytes.size()) throw std::runtime_error(id + " chunk overruns the file");
        if (id == "fmt " && size >= 16) {
            wav.format = littleEndian(bytes, body, 2);
            wav.channels = littleEndian(bytes, body + 2, 2);
            wav.sampleRate = littleEndian(bytes, body + 4, 4);
            wav.byteRate = littleEndian(bytes, body + 8, 4);
            wav.blockAlign = littleEndian(bytes, body + 12, 2);
            wav.bitsPerSample = littleEndian(bytes, body + 14, 2);
            haveFormat = true;
        } else if (id == "data") {
            for (std::size_t i = 0; i + 1 < size; i += 2) {
                wav.samples.push_back(static_cast<std::int16_t>(littleEndian(bytes, body + i, 2)));
            }
            haveData = true;
        }
        at = body + size + (size % 2);
    }
    if (!haveFormat || !haveData) throw std::runtime_error("missing fmt or data chunk");
    return wav;
}

Wav load(const char* name) {
    return readWav(std::filesystem::path(MIRVALDE_GAME_DIR) / name);
}

struct Expected {
    const char* name;
    double minSeconds, maxSeconds;
};
constexpr Expected kSounds[] = {{"gagner.wav", 0.4, 0.7}, {"perdu.wav", 0.3, 0.5}};

int peakOf(const std::vector<std::int16_t>& samples, std::size_t from, std::size_t to) {
    int peak = 0;
    for (std::size_t i = from; i < to; ++i) peak = std::max(peak, std::abs(int{samples[i]}));
    return peak;
}

double zeroCrossingsPerSecond(const Wav& wav) {
    int crossings = 0;
    for (std::size_t i = 1; i < wav.samples.size(); ++i) {
        if ((wav.samples[i - 1] < 0) != (wav.samples[i] < 0)) ++crossings;
    }
    return crossings / wav.seconds();
}

TEST(GameSounds, AreShortMono16BitPcmWithConsistentHeaders) {
    for (const Expected& expected : kSounds) {
        SCOPED_TRACE(expected.name);
        const Wav wav = load(expected.name);
        EXPECT_EQ(wav.format, 1u);
        EXPECT_EQ(wav.channels, 1u);
        EXPECT_EQ(wav.bitsPerSample, 16u);
        EXPECT_EQ(wav.sampleRate, 22050u);
        EXPECT_EQ(wav.byteRate, wav.sampleRate * 2);
        EXPECT_EQ(wav.blockAlign, 2u);
        EXPECT_EQ(wav.riffSize + 8u, wav.fileSize);
        EXPECT_GE(wav.seconds(), expected.minSeconds);
        EXPECT_LE(wav.seconds(), expected.maxSeconds);
    }
}

TEST(GameSounds, AreAudibleUnclippedAndFreeOfClicks) {
    for (const Expected& expected : kSounds) {
        SCOPED_TRACE(expected.name);
        const Wav wav = load(expected.name);
        const std::size_t n = wav.samples.size();
        ASSERT_GT(n, 1000u);
        const int peak = peakOf(wav.samples, 0, n);
        const double peakDb = 20.0 * std::log10(peak / 32768.0);
        EXPECT_GT(peakDb, -6.0) << "too quiet to notice";
        EXPECT_LT(peakDb, -1.0) << "no headroom: clipped or fatiguing";

        double energy = 0.0;
        for (std::int16_t s : wav.samples) energy += static_cast<double>(s) * s;
        EXPECT_GT(std::sqrt(energy / static_cast<double>(n)), 0.05 * peak) << "mostly silence";

        // An abrupt first or last sample is heard as a click every time the sound plays.
        const std::size_t oneMs = wav.sampleRate / 1000;
        EXPECT_LT(std::abs(int{wav.samples.front()}), 328);
        EXPECT_LT(std::abs(int{wav.samples.back()}), 328);
        EXPECT_LT(peakOf(wav.samples, 0, oneMs), peak / 4);
        EXPECT_LT(peakOf(wav.samples, n - oneMs, n), peak / 4);
    }
}

TEST(GameSounds, ChimeIsClearlyHigherThanBuzz) {
    const double chime = zeroCrossingsPerSecond(load("gagner.wav"));
    const double buzz = zeroCrossingsPerSecond(load("perdu.wav"));
    EXPECT_GT(chime, 3.0 * buzz);
    // Two crossings per cycle: the buzz must stay a low tone, not a whine.
    EXPECT_LT(buzz / 2.0, 250.0);
}

}  // namespace
