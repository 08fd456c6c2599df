// The tips file as any editor may have saved it: lines, end-of-line marks, text encodings.
// Input: the file's bytes.
#include <iconv.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TipsFile.h"

namespace {

[[noreturn]] void Fail(const char* what, std::size_t line = 0) {
    std::fprintf(stderr, "tips_fuzz: %s (line %zu)\n", what, line);
    std::abort();
}

// The code points of text in UTF-8, or in the code page, after the C library's converter: none
// when the text is not well formed there.
std::optional<std::u32string> Decode(std::string_view text, bool codePage = false) {
    static const iconv_t converters[] = {iconv_open("UTF-32LE", "UTF-8"),
                                         iconv_open("UTF-32LE", "WINDOWS-1252")};
    const iconv_t converter = converters[codePage];
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    std::u32string out(text.size(), U'\0');
    std::string in(text);
    char* from = in.data();
    auto* to = reinterpret_cast<char*>(out.data());
    std::size_t inLeft = in.size(), outLeft = out.size() * sizeof(char32_t);
    if (iconv(converter, &from, &inLeft, &to, &outLeft) == std::size_t(-1)) return std::nullopt;
    out.resize(out.size() - outLeft / sizeof(char32_t));
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const bool utf8 = Decode(bytes).has_value();
    if (mirvalde::IsValidUtf8(bytes) != utf8) Fail("UTF-8 validity misjudged");

    // Each byte of the code page is one character: ASCII and the Latin-1 half as they are. The
    // five bytes that the C library leaves out stand for themselves.
    const auto codes = Decode(mirvalde::Windows1252ToUtf8(bytes));
    if (!codes || codes->size() != bytes.size()) Fail("Windows-1252 gives wrong UTF-8");
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto code = Decode(bytes.substr(i, 1), true);
        if ((*codes)[i] != (code ? code->front() : static_cast<unsigned char>(bytes[i])))
            Fail("Windows-1252 character misread", i);
    }

    // The lines, split here at CR, LF and CRLF; a byte-order mark of a UTF-8 file is no text.
    std::string_view rest(bytes);
    if (utf8 && rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
    std::vector<std::string_view> lines;
    while (!rest.empty()) {
        const auto end = std::min(rest.find_first_of("\r\n"), rest.size());
        lines.push_back(rest.substr(0, end));
        rest.remove_prefix(end + (rest.substr(end).starts_with("\r\n") ? 2 : end < rest.size()));
    }

    const mirvalde::TipsFile tips = mirvalde::TipsFile::FromBytes(bytes);
    if (tips.IsUtf8() != utf8) Fail("encoding misjudged");
    if (tips.Count() != lines.size() || tips.Empty() != lines.empty())
        Fail("wrong number of lines", tips.Count());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string expected =
            utf8 ? std::string(lines[i]) : mirvalde::Windows1252ToUtf8(lines[i]);
        if (tips.Line(i) != expected) Fail("line differs from the file", i);
    }
    if (!tips.Line(lines.size()).empty() || !tips.Line(SIZE_MAX).empty())
        Fail("a line past the end is not empty");
    return 0;
}
