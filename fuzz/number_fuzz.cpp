// Numbers typed by the player and written with a format picture.
// Input: the first byte is the decimal separator (a digit or '-' stands for ','), then the
// picture up to the first line feed, then the text to read. The value written is the text read
// as a number (a leading '-' makes it negative), or else its first eight bytes as a double.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "NumberFormat.h"

namespace {

[[noreturn]] void Fail(const char* what, std::string_view a, std::string_view b = {}) {
    std::fprintf(stderr, "number_fuzz: %s [%s] [%s]\n", what, std::string(a).c_str(),
                 std::string(b).c_str());
    std::abort();
}

constexpr auto IsDigit = [](char c) { return c >= '0' && c <= '9'; };

// Digits with at most one separator, and at least one digit.
bool WellFormed(std::string_view text, char sep) {
    const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
    const auto seps = std::count(text.begin(), text.end(), sep);
    return digits > 0 && seps <= 1 && static_cast<std::size_t>(digits + seps) == text.size();
}

void CheckRead(std::string_view text, char sep) {
    const auto value = mirvalde::ReadNumber(text, sep);
    if (value.has_value() != WellFormed(text, sep) && (value || text.size() <= 300))
        Fail(value ? "read a malformed number" : "refused a number", text);
    if (!value) return;
    if (!std::isfinite(*value) || *value < 0) Fail("read a number out of range", text);

    // Up to 2^53 in all its digits and 10^22 below, the quotient is the nearest double.
    std::string digits(text);
    const auto at = std::min(digits.find(sep), digits.size());
    std::erase(digits, sep);
    double scale = 1;
    for (std::size_t i = at; i < digits.size(); ++i) scale *= 10;
    const auto n = std::strtoull(digits.c_str(), nullptr, 10);  // at most ULLONG_MAX
    if (n <= std::uint64_t{1} << 53 && scale <= 1e22 && *value != static_cast<double>(n) / scale)
        Fail("read the wrong value", text);
}

// The shortest decimal digits of `magnitude` rounded to `places`, a half away from zero.
double Rounded(double magnitude, std::size_t places) {
    char buffer[400];
    std::string text(
        buffer,
        std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::fixed).ptr);
    if (text.find('.') == std::string::npos) text += '.';
    const auto point = text.find('.');
    text.append(places + 1, '0');
    std::string digits = "0" + text.substr(0, point) + text.substr(point + 1, places);
    if (text[point + 1 + places] >= '5') {
        auto i = digits.size() - 1;
        for (; digits[i] == '9'; --i) digits[i] = '0';
        ++digits[i];
    }
    digits.insert(digits.size() - places, ".");
    return std::strtod(digits.c_str(), nullptr);
}

void CheckFormat(double value, std::string_view picture, char sep) {
    const std::string out = mirvalde::Format(value, picture, sep);

    // What the picture shows as is: everything but its placeholders, its point as `sep`. Only
    // digits and one '-' are added to it, in between.
    const auto point = picture.find('.');
    std::string literals;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] != '0' && picture[i] != '#') literals += i == point ? sep : picture[i];
    }
    std::size_t matched = 0, signs = 0;
    for (const char c : out) {
        if (matched < literals.size() && c == literals[matched]) {
            ++matched;
        } else if (!IsDigit(c) && (c != '-' || signs++)) {
            Fail("a literal is added", picture, out);
        }
    }
    if (matched != literals.size()) Fail("a literal is lost", picture, out);

    // Where no literal looks like a digit, a sign or a separator, the digits are the number.
    const bool clean =
        literals.find_first_of("0123456789-") == std::string::npos &&
        std::count(literals.begin(), literals.end(), sep) == (point != std::string_view::npos);
    if (!clean || !std::isfinite(value)) return;
    std::size_t places = 0, required = 0;  // fraction digits, and those up to the last '0'
    for (std::size_t i = point + 1; point != std::string_view::npos && i < picture.size(); ++i) {
        places += picture[i] == '0' || picture[i] == '#';
        if (picture[i] == '0') required = places;
    }
    const auto wholeZeros =
        std::count(picture.begin(), std::find(picture.begin(), picture.end(), '.'), '0');
    std::string whole, fraction;
    const auto at = point == std::string_view::npos ? out.size() : out.find(sep);
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (IsDigit(out[i])) (i < at ? whole : fraction) += out[i];
    }
    const double shown = std::strtod(("0" + whole + "." + fraction).c_str(), nullptr);
    if (shown != Rounded(std::fabs(value), places))
        Fail("the digits are not the rounded value", picture, out);
    if ((out[0] == '-') != (value < 0 && shown != 0)) Fail("wrong sign", picture, out);
    if (fraction.size() > places || fraction.size() < required ||
        (fraction.size() > required && fraction.back() == '0')) {
        Fail("wrong number of decimals", picture, out);
    }
    if (std::cmp_less(whole.size(), wholeZeros)) Fail("a '0' is not written", picture, out);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const char sep = IsDigit(input[0]) || input[0] == '-' ? ',' : input[0];
    const auto newline = std::min(input.find('\n', 1), size);
    const std::string_view picture = input.substr(1, newline - 1);
    const std::string_view text = input.substr(std::min(newline + 1, size));

    CheckRead(text, sep);

    const bool negative = text.starts_with('-');
    double value = 0;
    if (const auto read = mirvalde::ReadNumber(text.substr(negative), sep)) {
        value = negative ? -*read : *read;
    } else if (text.size() >= sizeof value) {
        std::memcpy(&value, text.data(), sizeof value);
    }
    CheckFormat(value, picture, sep);
    if (!std::isfinite(value)) return 0;

    // Any finite magnitude, not only those typed, is written plainly with no digit to spare,
    // and reads back from it.
    const double magnitude = std::fabs(value);
    const std::string shortest = mirvalde::ShortestText(magnitude, sep);
    const auto at = shortest.find(sep);
    const std::string cut = shortest.substr(0, shortest.size() - 1);
    if (mirvalde::ReadNumber(shortest, sep) != magnitude)
        Fail("shortest text reads back wrong", shortest);
    if (!WellFormed(shortest, sep) || at == 0 || (shortest[0] == '0' && at != 1 && !cut.empty()) ||
        (at != std::string::npos && mirvalde::ReadNumber(cut, sep) == magnitude)) {
        Fail("shortest text is not the shortest", shortest);
    }
    return 0;
}
