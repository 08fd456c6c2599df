// The tips file as any editor may have saved it: lines, end-of-line marks, text encodings.
// Input: the file's bytes.
#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "TipsFile.h"

namespace {

[[noreturn]] void Fail(const char* what, std::size_t line = 0) {
    std::fprintf(stderr, "tips_fuzz: %s (line %zu)\n", what, line);
    std::abort();
}

// Well-formed UTF-8 after the table of the Unicode standard: each lead byte with the ranges
// its second byte may take.
bool WellFormedUtf8(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        const auto b = static_cast<unsigned char>(text[i]);
        int length = 1;
        unsigned char low = 0x80, high = 0xBF;  // range of the second byte
        if (b < 0x80) {
            ++i;
            continue;
        } else if (b >= 0xC2 && b <= 0xDF) {
            length = 2;
        } else if (b >= 0xE0 && b <= 0xEF) {
            length = 3;
            if (b == 0xE0) low = 0xA0;
            if (b == 0xED) high = 0x9F;
        } else if (b >= 0xF0 && b <= 0xF4) {
            length = 4;
            if (b == 0xF0) low = 0x90;
            if (b == 0xF4) high = 0x8F;
        } else {
            return false;
        }
        if (text.size() - i < static_cast<std::size_t>(length)) return false;
        for (int k = 1; k < length; ++k) {
            const auto c = static_cast<unsigned char>(text[i + k]);
            if (k == 1 ? c < low || c > high : c < 0x80 || c > 0xBF) return false;
        }
        i += length;
    }
    return true;
}

// Code points of well-formed UTF-8.
std::vector<char32_t> Decode(std::string_view text) {
    std::vector<char32_t> out;
    for (std::size_t i = 0; i < text.size();) {
        const auto b = static_cast<unsigned char>(text[i]);
        const int length = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
        char32_t code = length == 1 ? b : b & (0x3F >> (length - 1));
        for (int k = 1; k < length; ++k) code = (code << 6) | (text[i + k] & 0x3F);
        out.push_back(code);
        i += length;
    }
    return out;
}

// Each byte's character in the code page, after the C library's table; the five bytes that it
// leaves out stand for themselves.
const std::array<char32_t, 256>& CodePage() {
    static const std::array<char32_t, 256> table = [] {
        std::array<char32_t, 256> codes{};
        const iconv_t toUtf32 = iconv_open("UTF-32LE", "WINDOWS-1252");
        for (int b = 0; b < 256; ++b) {
            char in = static_cast<char>(b);
            char32_t out = 0;
            char* from = &in;
            auto* to = reinterpret_cast<char*>(&out);
            std::size_t inLeft = 1, outLeft = sizeof out;
            const bool known = iconv(toUtf32, &from, &inLeft, &to, &outLeft) != std::size_t(-1);
            codes[b] = known ? out : static_cast<char32_t>(b);
        }
        iconv_close(toUtf32);
        return codes;
    }();
    return table;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const bool utf8 = WellFormedUtf8(bytes);
    if (mirvalde::IsValidUtf8(bytes) != utf8) Fail("UTF-8 validity misjudged");

    // Each byte of the code page is one character: ASCII and the Latin-1 half as they are.
    const std::string converted = mirvalde::Windows1252ToUtf8(bytes);
    if (!WellFormedUtf8(converted)) Fail("Windows-1252 gives ill-formed UTF-8");
    const std::vector<char32_t> codes = Decode(converted);
    if (codes.size() != bytes.size()) Fail("Windows-1252 gives a wrong number of characters");
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (codes[i] != CodePage()[static_cast<unsigned char>(bytes[i])])
            Fail("Windows-1252 character misread", i);
    }

    // The lines, split here at CR, LF and CRLF; a byte-order mark of a UTF-8 file is no text.
    std::string_view rest(bytes);
    if (utf8 && rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
    std::vector<std::string_view> lines;
    while (!rest.empty()) {
        const auto end = std::min(rest.find_first_of("\r\n"), rest.size());
        lines.push_back(rest.substr(0, end));
        std::size_t mark = end < rest.size() ? 1 : 0;
        if (rest.substr(end).starts_with("\r\n")) mark = 2;
        rest.remove_prefix(end + mark);
    }

    const mirvalde::TipsFile tips = mirvalde::TipsFile::FromBytes(bytes);
    if (tips.IsUtf8() != utf8) Fail("encoding misjudged");
    if (tips.Count() != lines.size() || tips.Empty() != lines.empty())
        Fail("wrong number of lines", tips.Count());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string line = tips.Line(i);
        if (line.find_first_of("\r\n") != std::string::npos) Fail("end of line kept", i);
        if (!WellFormedUtf8(line)) Fail("line is not UTF-8", i);
        const std::string expected =
            utf8 ? std::string(lines[i]) : mirvalde::Windows1252ToUtf8(lines[i]);
        if (line != expected) Fail("line differs from the file", i);
    }
    if (!tips.Line(lines.size()).empty() || !tips.Line(SIZE_MAX).empty())
        Fail("a line past the end is not empty");
    return 0;
}
