// A fuzz target as a plain test: its seed corpus, then inputs grown from it by a few edits each,
// drawn from a fixed seed so that every run checks the same ones. A broken property aborts.
//   fuzz_NAME_replay CORPUS_FOLDER [INPUTS]
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

// Digits, separators, picture characters, line ends, blanks, and the bytes at the bounds of
// UTF-8's sequences and of the code page's upper half.
constexpr std::string_view kBytes =
    "0123456789,.#-+ "
    "\t\r\n[]=@;\"\\:\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xC3\xDF\xE0\xE9\xED\xEF\xF0\xF4"
    "\xF5\xFE\xFF";

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    if (LLVMFuzzerInitialize) LLVMFuzzerInitialize(&argc, &argv);
    std::vector<std::string> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    if (seeds.empty()) return 2;
    const long inputs = argc > 2 ? std::atol(argv[2]) : 20000;
    std::mt19937 random(20261124);
    const auto below = [&](std::size_t n) { return n ? random() % n : 0; };
    // The seeds as they are, then the inputs grown from them.
    const auto n = static_cast<long>(seeds.size());
    for (long i = -n; i < inputs; ++i) {
        std::string input = seeds[(i + n) % n];
        for (int edits = i < 0 ? 0 : 1 + static_cast<int>(below(4)); edits > 0; --edits) {
            const std::size_t at = below(input.size() + 1);
            const char byte = random() % 4 ? kBytes[below(kBytes.size())] : char(random());
            const auto edit = random() % 4;
            if (edit == 0) input.insert(at, 1, byte);
            if (edit == 1 && at < input.size()) input[at] = byte;
            if (edit == 2) input.erase(at, 1 + below(3));
            if (edit == 3) input.insert(at, input.substr(below(input.size()), 1 + below(8)));
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
    std::printf("%zu seeds and %ld grown inputs hold\n", seeds.size(), inputs);
    return 0;
}
