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
    std::fprintf(stderr, "number_fuzz: %s [%.*s] [%.*s]\n", what, static_cast<int>(a.size()),
                 a.data(), static_cast<int>(b.size()), b.data());
    std::abort();
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Digits with at most one separator, and at least one digit.
bool WellFormed(std::string_view text, char sep) {
    const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
    const auto seps = std::count(text.begin(), text.end(), sep);
    return digits > 0 && seps <= 1 && static_cast<std::size_t>(digits + seps) == text.size();
}

double Decimal(const std::string& text) {  // plain "123.45" as the nearest double
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// The shortest decimal form of a finite magnitude, as whole and fraction digits.
void Shortest(double value, std::string& whole, std::string& fraction) {
    char buffer[400];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr;
    const std::string text(buffer, end);
    const auto point = text.find('.');
    whole = text.substr(0, point);
    fraction = point == std::string::npos ? "" : text.substr(point + 1);
}

void CheckRead(std::string_view text, char sep) {
    const auto value = mirvalde::ReadNumber(text, sep);
    if (value.has_value() != WellFormed(text, sep) && (value || text.size() <= 300))
        Fail(value ? "read a malformed number" : "refused a number", text);
    if (!value) return;
    if (!std::isfinite(*value) || *value < 0) Fail("read a number out of range", text);

    // Up to 2^53 in all its digits and 10^22 below, the quotient is the nearest double.
    constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
    std::uint64_t n = 0;
    double scale = 1;
    bool afterSep = false;
    for (const char c : text) {
        if (c == sep) {
            afterSep = true;
        } else if (n <= kExact) {
            n = n * 10 + static_cast<std::uint64_t>(c - '0');
            if (afterSep) scale *= 10;
        }
    }
    if (n <= kExact && scale <= 1e22 && *value != static_cast<double>(n) / scale)
        Fail("read the wrong value", text);

    // The shortest text reads back as the same value, and nothing in it can be dropped.
    const std::string shortest = mirvalde::ShortestText(*value, sep);
    if (mirvalde::ReadNumber(shortest, sep) != *value)
        Fail("shortest text reads back wrong", shortest);
    const auto at = shortest.find(sep);
    const std::string_view whole = std::string_view(shortest).substr(0, at);
    if (!WellFormed(shortest, sep) || whole.empty() || (whole.size() > 1 && whole[0] == '0') ||
        (at != std::string::npos && (shortest.back() == '0' || shortest.back() == sep))) {
        Fail("shortest text is not plain", shortest);
    }
    if (at != std::string::npos &&
        mirvalde::ReadNumber(std::string_view(shortest).substr(0, shortest.size() - 1), sep) ==
            *value) {
        Fail("shortest text is not the shortest", shortest);
    }
}

// The expected digits of `magnitude` rounded to `places`, a half away from zero, as "w.f".
std::string Rounded(double magnitude, std::size_t places) {
    std::string whole, fraction;
    Shortest(magnitude, whole, fraction);
    if (fraction.size() <= places) return whole + "." + fraction;
    const bool up = fraction[places] >= '5';
    std::string digits = whole + fraction.substr(0, places);
    if (up) {
        auto i = digits.size();
        while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
        if (i == 0) {
            digits.insert(digits.begin(), '1');
        } else {
            ++digits[i - 1];
        }
    }
    return digits.substr(0, digits.size() - places) + "." + digits.substr(digits.size() - places);
}

void CheckFormat(double value, std::string_view picture, char sep) {
    const std::string out = mirvalde::Format(value, picture, sep);

    // What the picture shows as is: everything but its placeholders, its point as `sep`.
    const auto point = picture.find('.');
    std::string literals;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] != '0' && picture[i] != '#') literals += i == point ? sep : picture[i];
    }
    // Only digits, a '-' and the separator are added to it, in between.
    for (int c = 0; c < 256; ++c) {
        const auto ch = static_cast<char>(c);
        const auto added = std::count(out.begin(), out.end(), ch) -
                           std::count(literals.begin(), literals.end(), ch);
        const bool ok = IsDigit(ch) ? added >= 0
                        : ch == '-' ? added == 0 || added == 1
                                    : added == 0;
        if (!ok) Fail("a literal is lost or added", picture, out);
    }
    std::size_t matched = 0;
    for (const char c : out) matched += matched < literals.size() && c == literals[matched];
    if (matched != literals.size()) Fail("the literals are out of order", picture, out);

    // Where no literal looks like a digit, a sign or a separator, the digits are the number.
    const bool clean =
        std::none_of(literals.begin(), literals.end(),
                     [](char c) { return IsDigit(c) || c == '-'; }) &&
        std::count(literals.begin(), literals.end(), sep) == (point != std::string_view::npos);
    if (!clean || !std::isfinite(value)) return;
    const std::string_view fractionPicture =
        point == std::string_view::npos ? std::string_view{} : picture.substr(point + 1);
    const auto places =
        static_cast<std::size_t>(std::count_if(fractionPicture.begin(), fractionPicture.end(),
                                               [](char c) { return c == '0' || c == '#'; }));
    const auto wholeZeros =
        std::count(picture.begin(), picture.begin() + std::min(point, picture.size()), '0');
    std::size_t required = 0;  // fraction digits up to the last '0'
    for (std::size_t i = 0, n = 0; i < fractionPicture.size(); ++i) {
        if (fractionPicture[i] == '#' || fractionPicture[i] == '0') ++n;
        if (fractionPicture[i] == '0') required = n;
    }
    std::string whole, fraction;
    const auto at = point == std::string_view::npos ? out.size() : out.find(sep);
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (IsDigit(out[i])) (i < at ? whole : fraction) += out[i];
    }
    const double shown = Decimal("0" + whole + "." + fraction + "0");
    if (shown != Decimal(Rounded(std::fabs(value), places)))
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
    char sep = input[0];
    if (IsDigit(sep) || sep == '-') sep = ',';
    const std::string_view rest = input.substr(1);
    const auto newline = rest.find('\n');
    const std::string_view picture = rest.substr(0, newline);
    const std::string_view text =
        newline == std::string_view::npos ? std::string_view{} : rest.substr(newline + 1);

    CheckRead(text, sep);

    const bool negative = text.starts_with('-');
    double value = 0;
    if (const auto read = mirvalde::ReadNumber(text.substr(negative), sep)) {
        value = negative ? -*read : *read;
    } else if (text.size() >= sizeof value) {
        std::memcpy(&value, text.data(), sizeof value);
    }
    CheckFormat(value, picture, sep);

    // Any finite magnitude, not only those typed, reads back from its shortest text.
    if (std::isfinite(value) && mirvalde::ReadNumber(mirvalde::ShortestText(std::fabs(value), sep),
                                                     sep) != std::fabs(value)) {
        Fail("shortest text of a magnitude reads back wrong", text);
    }
    return 0;
}
