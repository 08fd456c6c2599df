#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

// The generated sounds, checked for what a player would hear go wrong: a file the audio
// backend rejects, a sound too long or silent, clipping, clicks, or the two swapped.
struct Wav {
    explicit Wav(const char* name) {
        std::ifstream in(std::string(MIRVALDE_GAME_DIR) + "/" + name, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), {});
        bytes.resize(std::max<std::size_t>(bytes.size(), 44));
    }
    std::uint32_t Field(std::size_t at, int width) const {
        std::uint32_t value = 0;
        for (int i = width - 1; i >= 0; --i) value = value << 8 | std::uint8_t(bytes[at + i]);
        return value;
    }
    std::uint32_t Samples() const { return static_cast<std::uint32_t>(bytes.size() - 44) / 2; }
    int Sample(std::size_t i) const { return static_cast<std::int16_t>(Field(44 + 2 * i, 2)); }
    int Peak(std::size_t from, std::size_t to) const {
        int peak = 0;
        for (std::size_t i = from; i < to; ++i) peak = std::max(peak, std::abs(Sample(i)));
        return peak;
    }
    // Zero crossings a second: twice the pitch of a plain tone.
    double Crossings() const {
        int count = 0;
        for (std::size_t i = 1; i < Samples(); ++i) count += (Sample(i - 1) < 0) != (Sample(i) < 0);
        return count * 22050.0 / Samples();
    }
    std::string bytes;
};

TEST(GameSoundsTest, AreShortCleanMonoPcmFilesAndTheChimeIsHigherThanTheBuzz) {
    const struct {
        const char* name;
        double shortest, longest;
    } sounds[] = {{"gagner.wav", 0.4, 0.7}, {"perdu.wav", 0.3, 0.5}};
    for (const auto& sound : sounds) {
        SCOPED_TRACE(sound.name);
        const Wav wav(sound.name);
        const std::uint32_t n = wav.Samples();
        ASSERT_EQ(wav.bytes.substr(0, 16), "RIFF" + wav.bytes.substr(4, 4) + "WAVEfmt ");
        // PCM, mono, 22050 samples a second of 16 bits, every length right.
        EXPECT_EQ(std::vector<std::uint32_t>({wav.Field(20, 2), wav.Field(22, 2), wav.Field(24, 4),
                                              wav.Field(34, 2), wav.Field(40, 4), wav.Field(4, 4)}),
                  std::vector<std::uint32_t>({1, 1, 22050, 16, 2 * n, 36 + 2 * n}));
        EXPECT_GE(n / 22050.0, sound.shortest);
        EXPECT_LE(n / 22050.0, sound.longest);
        const int peak = wav.Peak(0, n);
        EXPECT_GT(peak, 16384) << "too quiet to notice";
        EXPECT_LT(peak, 29000) << "no headroom: clipped or fatiguing";
        // An abrupt first or last millisecond is heard as a click every time.
        EXPECT_LT(std::max(wav.Peak(0, 22), wav.Peak(n - 22, n)), peak / 4);
    }
    const double chime = Wav("gagner.wav").Crossings(), buzz = Wav("perdu.wav").Crossings();
    EXPECT_GT(chime, 3.0 * buzz);
    EXPECT_LT(buzz / 2.0, 250.0);  // a low tone, not a whine
}

}  // namespace
