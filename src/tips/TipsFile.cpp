#include "TipsFile.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace mirvalde {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

void AppendUtf8(std::string& out, char32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// Bytes 0x80 to 0x9F of Windows-1252; the rest of the upper half is Latin-1.
constexpr std::array<char16_t, 32> kUpperControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = p + bytes.size();
    while (p < end) {
        // Plain ASCII, the bulk of any tips file, is passed eight bytes at a time.
        while (end - p >= 8) {
            std::uint64_t eight = 0;
            std::memcpy(&eight, p, 8);
            if (eight & 0x8080808080808080ull) break;
            p += 8;
        }
        if (p == end) break;
        const unsigned char lead = *p;
        if (lead < 0x80) {
            ++p;
            continue;
        }
        int length = 0;
        char32_t code = 0;
        char32_t least = 0;
        if ((lead & 0xE0) == 0xC0) {
            length = 2;
            code = lead & 0x1F;
            least = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3;
            code = lead & 0x0F;
            least = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4;
            code = lead & 0x07;
            least = 0x10000;
        } else {
            return false;
        }
        if (end - p < length) return false;
        for (int i = 1; i < length; ++i) {
            if ((p[i] & 0xC0) != 0x80) return false;
            code = (code << 6) | (p[i] & 0x3F);
        }
        if (code < least || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
        p += length;
    }
    return true;
}

std::string Windows1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 4);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xA0) {
            AppendUtf8(out, kUpperControls[byte - 0x80]);
        } else {
            AppendUtf8(out, byte);
        }
    }
    return out;
}

std::optional<TipsFile> TipsFile::Read(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error || !fs::is_regular_file(status)) return std::nullopt;
    // A file that nobody may read counts as missing, for root too.
    constexpr auto kReadable =
        fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    if ((status.permissions() & kReadable) == fs::perms::none) return std::nullopt;

    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size < 0) return std::nullopt;
    file.seekg(0, std::ios::beg);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!file.read(bytes.data(), size)) return std::nullopt;
    return FromBytes(std::move(bytes));
}

TipsFile TipsFile::FromBytes(std::string bytes) {
    TipsFile tips;
    tips.bytes_ = std::move(bytes);
    tips.utf8_ = IsValidUtf8(tips.bytes_);
    tips.Index();
    return tips;
}

void TipsFile::Index() {
    std::size_t start = 0;
    if (utf8_ && std::string_view(bytes_).starts_with(kByteOrderMark))
        start = kByteOrderMark.size();
    const std::size_t size = bytes_.size();
    const char* const data = bytes_.data();
    std::size_t i = start;
    while (i < size) {
        starts_.push_back(i);
        while (i < size && data[i] != '\r' && data[i] != '\n') ++i;
        // CR, LF or the pair CRLF end the line.
        if (i < size && data[i] == '\r') ++i;
        if (i < size && data[i] == '\n') ++i;
    }
}

std::string TipsFile::Line(std::size_t index) const {
    if (index >= starts_.size()) return {};
    const std::size_t start = starts_[index];
    std::size_t end = start;
    while (end < bytes_.size() && bytes_[end] != '\r' && bytes_[end] != '\n') ++end;
    const std::string_view line(bytes_.data() + start, end - start);
    return utf8_ ? std::string(line) : Windows1252ToUtf8(line);
}

}  // namespace mirvalde
