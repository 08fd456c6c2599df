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

// Zero crossings a second: twice the pitch of a plain tone.
double Crossings(const Wav& wav) {
    int count = 0;
    for (std::size_t i = 1; i < wav.samples.size(); ++i) {
        count += (wav.samples[i - 1] < 0) != (wav.samples[i] < 0);
    }
    return count / wav.Seconds();
}

TEST(GameSoundsTest, AreShortCleanMonoPcmFilesAndTheChimeIsHigherThanTheBuzz) {
    const struct {
        const char* name;
        double shortest, longest;
    } sounds[] = {{"gagner.wav", 0.4, 0.7}, {"perdu.wav", 0.3, 0.5}};
    for (const auto& sound : sounds) {
        SCOPED_TRACE(sound.name);
        const Wav wav = Load(sound.name);
        const std::size_t n = wav.samples.size();
        ASSERT_EQ(wav.header.substr(0, 16),
                  std::string("RIFF") + wav.header.substr(4, 4) + "WAVEfmt ");
        // PCM, mono, 22050 samples a second of 16 bits, every length right.
        EXPECT_EQ(std::vector<std::uint32_t>({wav.Field(20, 2), wav.Field(22, 2), wav.Field(24, 4),
                                              wav.Field(34, 2), wav.Field(40, 4), wav.Field(4, 4)}),
                  std::vector<std::uint32_t>({1, 1, 22050, 16, 2 * n, 36 + 2 * n}));
        EXPECT_GE(wav.Seconds(), sound.shortest);
        EXPECT_LE(wav.Seconds(), sound.longest);
        const int peak = Peak(wav.samples, 0, n);
        EXPECT_GT(peak, 16384) << "too quiet to notice";
        EXPECT_LT(peak, 29000) << "no headroom: clipped or fatiguing";
        // An abrupt first or last millisecond is heard as a click every time.
        EXPECT_LT(std::max(Peak(wav.samples, 0, 22), Peak(wav.samples, n - 22, n)), peak / 4);
    }
    const double chime = Crossings(Load("gagner.wav")), buzz = Crossings(Load("perdu.wav"));
    EXPECT_GT(chime, 3.0 * buzz);
    EXPECT_LT(buzz / 2.0, 250.0);  // a low tone, not a whine
}

}  // namespace
