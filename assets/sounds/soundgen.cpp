// Synthesises the game's two feedback sounds at build time, so the repository carries no
// binary audio and the output is identical on every build.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <system_error>
#include <utility>
#include <vector>

namespace {

constexpr int kSampleRate = 22050;
// -3 dBFS leaves headroom against clipping while staying clearly audible.
constexpr double kPeak = 0.7071;
constexpr double kTwoPi = 2.0 * std::numbers::pi;

using Signal = std::vector<double>;

Signal silence(double duration) {
    return Signal(static_cast<std::size_t>(duration * kSampleRate), 0.0);
}

double timeOf(std::size_t index) {
    return static_cast<double>(index) / kSampleRate;
}

// Raised-cosine ramp: smoother than a linear one, so no audible tick at the corners.
double ramp(double t, double length) {
    if (t <= 0.0) return 0.0;
    if (t >= length) return 1.0;
    return 0.5 - 0.5 * std::cos(std::numbers::pi * t / length);
}

void fadeEdges(Signal& signal, double fadeIn, double fadeOut) {
    const std::size_t last = signal.size() - 1;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        signal[i] *= ramp(timeOf(i), fadeIn) * ramp(timeOf(last - i), fadeOut);
    }
}

void normalise(Signal& signal) {
    double peak = 0.0;
    for (double x : signal) peak = std::max(peak, std::abs(x));
    if (peak == 0.0) return;
    for (double& x : signal) x *= kPeak / peak;
}

// A struck bar: upper partials die out faster than the fundamental, which is what makes
// it sound like a bell rather than an organ. The slightly stretched top partial adds shimmer.
void addBell(Signal& signal, double start, double frequency, double gain) {
    struct Partial {
        double ratio, amplitude, decay;
    };
    constexpr Partial kPartials[] = {
        {1.0, 1.0, 0.16}, {2.0, 0.35, 0.08}, {3.0, 0.12, 0.05}, {4.2, 0.05, 0.03}};
    const auto first = static_cast<std::size_t>(start * kSampleRate);
    for (std::size_t i = first; i < signal.size(); ++i) {
        const double t = timeOf(i - first);
        double sample = 0.0;
        for (const Partial& p : kPartials) {
            sample +=
                p.amplitude * std::exp(-t / p.decay) * std::sin(kTwoPi * frequency * p.ratio * t);
        }
        signal[i] += gain * ramp(t, 0.004) * sample;
    }
}

// Rising major arpeggio (A5, C#6, E6): reads as "well done" without being shrill.
Signal synthesiseChime() {
    Signal chime = silence(0.6);
    addBell(chime, 0.00, 880.00, 0.8);
    addBell(chime, 0.08, 1108.73, 0.9);
    addBell(chime, 0.16, 1318.51, 1.0);
    fadeEdges(chime, 0.002, 0.06);
    normalise(chime);
    return chime;
}

// A low sawtooth-like tone sliding down and fading: unmistakably "no", yet the harmonics stop
// around 1 kHz and the level sags, so it never turns harsh when heard over and over.
Signal synthesiseBuzz() {
    constexpr double kDuration = 0.4, kFrom = 140.0, kTo = 110.0;
    constexpr int kHarmonics = 8;
    Signal buzz = silence(kDuration);
    double phase = 0.0;
    for (std::size_t i = 0; i < buzz.size(); ++i) {
        double sample = 0.0;
        for (int k = 1; k <= kHarmonics; ++k) sample += std::sin(k * phase) / k;
        buzz[i] = sample * std::exp(-timeOf(i) / 0.4);
        const double frequency = kFrom + (kTo - kFrom) * timeOf(i) / kDuration;
        phase = std::fmod(phase + kTwoPi * frequency / kSampleRate, kTwoPi);
    }
    fadeEdges(buzz, 0.025, 0.12);
    normalise(buzz);
    return buzz;
}

void putLittleEndian(std::ofstream& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out.put(static_cast<char>((value >> (8 * i)) & 0xFF));
}

// Mono 16-bit PCM, the format every audio backend accepts without conversion.
bool writeWav(const std::filesystem::path& path, const Signal& signal) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    const auto dataSize = static_cast<std::uint32_t>(signal.size() * 2);
    out.write("RIFF", 4);
    putLittleEndian(out, 36 + dataSize, 4);
    out.write("WAVEfmt ", 8);
    putLittleEndian(out, 16, 4);  // fmt chunk size
    putLittleEndian(out, 1, 2);   // PCM
    putLittleEndian(out, 1, 2);   // mono
    putLittleEndian(out, kSampleRate, 4);
    putLittleEndian(out, kSampleRate * 2, 4);  // byte rate
    putLittleEndian(out, 2, 2);                // block align
    putLittleEndian(out, 16, 2);               // bits per sample
    out.write("data", 4);
    putLittleEndian(out, dataSize, 4);
    for (double x : signal) {
        const long value = std::clamp(std::lround(x * 32767.0), -32768L, 32767L);
        putLittleEndian(out, static_cast<std::uint32_t>(value), 2);
    }
    out.close();
    return static_cast<bool>(out);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: soundgen OUTPUT_DIR\n";
        return 2;
    }
    const std::filesystem::path dir = argv[1];
    std::error_code ignored;
    std::filesystem::create_directories(dir, ignored);  // a failure shows up when writing

    const std::pair<const char*, Signal> sounds[] = {{"gagner.wav", synthesiseChime()},
                                                     {"perdu.wav", synthesiseBuzz()}};
    for (const auto& [name, signal] : sounds) {
        if (!writeWav(dir / name, signal)) {
            std::cerr << "soundgen: cannot write " << (dir / name).string() << '\n';
            return 1;
        }
    }
    return 0;
}
