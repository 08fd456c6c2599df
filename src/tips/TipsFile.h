#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mirvalde {

// The lines of a plain text file, kept as the file's bytes and where each line starts, so that
// a very large file costs little more than its size and only the line shown is decoded.
//
// A line ends at CR, CRLF or LF; the last line needs no end. A file that is valid UTF-8 (with
// or without a byte-order mark, which is not part of the first line) is read as UTF-8; any
// other as Windows-1252, the code page plain text editors write on a French Windows system.
class TipsFile {
  public:
    // The file at `path`, or nothing when it is not a regular file that can be read.
    static std::optional<TipsFile> Read(const std::string& path);
    static TipsFile FromBytes(std::string bytes);

    std::size_t Count() const { return starts_.size(); }
    bool Empty() const { return starts_.empty(); }
    bool IsUtf8() const { return utf8_; }
    // Line `index` from 0, as UTF-8, without its end of line.
    std::string Line(std::size_t index) const;

  private:
    void Index();

    std::string bytes_;
    std::vector<std::size_t> starts_;
    bool utf8_ = true;
};

// Whether `bytes` is well-formed UTF-8: no stray continuation byte, no overlong form, no
// surrogate, nothing above U+10FFFF.
bool IsValidUtf8(std::string_view bytes);

// Windows-1252 text as UTF-8. The five bytes the code page leaves undefined keep their own
// code points, as Windows itself maps them.
std::string Windows1252ToUtf8(std::string_view bytes);

}  // namespace mirvalde
