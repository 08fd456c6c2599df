#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

// The generated sounds, checked for what a player would hear go wrong: a file the audio
// backend rejects, a sound too long or silent, clipping, clicks, or the two swapped.
struct Wav {
    std::string header;
    std::vector<std::int16_t> samples;
    std::uint32_t Field(std::size_t at, int width) const {
        std::uint32_t value = 0;
        for (int i = width - 1; i >= 0; --i) value = value << 8 | std::uint8_t(header[at + i]);
        return value;
    }
    double Seconds() const { return static_cast<double>(samples.size()) / 22050.0; }
};

Wav Load(const char* name) {
    std::ifstream in(std::string(MIRVALDE_GAME_DIR) + "/" + name, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    Wav wav{bytes.substr(0, 44), {}};
    for (std::size_t i = 44; i + 1 < bytes.size(); i += 2) {
        wav.samples.push_back(
            static_cast<std::int16_t>(std::uint8_t(bytes[i]) | std::uint8_t(bytes[i + 1]) << 8));
    }
    return wav;
}

int Peak(const std::vector<std::int16_t>& samples, std::size_t from, std::size_t to) {
    int peak = 0;
    for (std::size_t i = from; i < to; ++i) peak = std::max(peak, std::abs(int{samples[i]}));
    return peak;
}

TEST(GameSoundsTest, AreShortCleanMonoPcmFilesWithoutClipsOrClicks) {
    const struct {
        const char* name;
        double shortest, longest;
    } sounds[] = {{"gagner.wav", 0.4, 0.7}, {"perdu.wav", 0.3, 0.5}};
    for (const auto& sound : sounds) {
        SCOPED_TRACE(sound.name);
        const Wav wav = Load(sound.name);
        ASSERT_EQ(wav.header.substr(0, 4), "RIFF");
        EXPECT_EQ(wav.header.substr(8, 8), "WAVEfmt ");
        EXPECT_EQ(wav.Field(20, 2), 1u);  // PCM
        EXPECT_EQ(wav.Field(22, 2), 1u);  // mono
        EXPECT_EQ(wav.Field(24, 4), 22050u);
        EXPECT_EQ(wav.Field(34, 2), 16u);
        EXPECT_EQ(wav.Field(40, 4), wav.samples.size() * 2);
        EXPECT_EQ(wav.Field(4, 4), 36 + wav.samples.size() * 2);
        EXPECT_GE(wav.Seconds(), sound.shortest);
        EXPECT_LE(wav.Seconds(), sound.longest);

        const std::size_t n = wav.samples.size();
        const int peak = Peak(wav.samples, 0, n);
        EXPECT_GT(peak, 16384) << "too quiet to notice";
        EXPECT_LT(peak, 29000) << "no headroom: clipped or fatiguing";
        // An abrupt first or last millisecond is heard as a click every time.
        EXPECT_LT(Peak(wav.samples, 0, 22), peak / 4);
        EXPECT_LT(Peak(wav.samples, n - 22, n), peak / 4);
    }
}

TEST(GameSoundsTest, TheChimeIsClearlyHigherThanTheBuzz) {
    const auto crossings = [](const Wav& wav) {
        int count = 0;
        for (std::size_t i = 1; i < wav.samples.size(); ++i) {
            count += (wav.samples[i - 1] < 0) != (wav.samples[i] < 0);
        }
        return count / wav.Seconds();
    };
    const double chime = crossings(Load("gagner.wav"));
    const double buzz = crossings(Load("perdu.wav"));
    EXPECT_GT(chime, 3.0 * buzz);
    EXPECT_LT(buzz / 2.0, 250.0);  // a low tone, not a whine
}

}  // namespace
