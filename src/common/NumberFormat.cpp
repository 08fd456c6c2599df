#include "NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace mirvalde {
namespace {

bool IsPlaceholder(char c) {
    return c == '0' || c == '#';
}

// Shortest decimal form of a finite, non-negative value, split at the point.
struct Decimal {
    std::string whole;     // no leading zeros: empty for 0
    std::string fraction;  // no trailing zeros
};

// Drops the leading zeros of the whole part and the trailing zeros of the fraction, which
// the pictures' "#" must never see as digits.
void Trim(Decimal& d) {
    d.whole.erase(0, std::min(d.whole.find_first_not_of('0'), d.whole.size()));
    while (!d.fraction.empty() && d.fraction.back() == '0') d.fraction.pop_back();
}

Decimal ToDecimal(double value) {
    std::array<char, 400> buffer{};
    auto [end, ec] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed);
    std::string text = ec == std::errc() ? std::string(buffer.data(), end) : std::string("0");
    Decimal d;
    const auto point = text.find('.');
    d.whole = text.substr(0, point);
    if (point != std::string::npos) d.fraction = text.substr(point + 1);
    Trim(d);
    return d;
}

// Adds one unit of the fraction's last place, carrying into the whole part.
void AddLastUnit(Decimal& d) {
    std::string digits = d.whole + d.fraction;
    int i = static_cast<int>(digits.size()) - 1;
    for (; i >= 0 && digits[i] == '9'; --i) digits[i] = '0';
    if (i >= 0) {
        ++digits[i];
    } else {
        digits.insert(digits.begin(), '1');
    }
    const std::size_t wholeSize = digits.size() - d.fraction.size();
    d.whole = digits.substr(0, wholeSize);
    d.fraction = digits.substr(wholeSize);
}

// Rounds to `places` decimals, a half away from zero (the value is a magnitude here).
void RoundTo(Decimal& d, std::size_t places) {
    if (d.fraction.size() <= places) return;
    const bool up = d.fraction[places] >= '5';
    d.fraction.resize(places);
    if (up) AddLastUnit(d);
    // Cutting leaves zeros at the end as surely as carrying does: 50.501 is 50.50.
    Trim(d);
}

// Lays the whole digits onto the picture from the right.
std::string FormatWhole(const std::string& digits, std::string_view picture) {
    const auto first = std::find_if(picture.begin(), picture.end(), IsPlaceholder);
    const auto firstIndex = static_cast<std::size_t>(first - picture.begin());
    std::string reversed;
    std::size_t next = digits.size();  // digits still to write are [0, next)
    for (std::size_t i = picture.size(); i-- > 0;) {
        const char c = picture[i];
        if (!IsPlaceholder(c)) {
            reversed += c;
            continue;
        }
        if (next > 0) {
            reversed += digits[--next];
        } else if (c == '0') {
            reversed += '0';
        }
        if (i == firstIndex) {
            while (next > 0) reversed += digits[--next];
        }
    }
    if (first == picture.end()) {  // no placeholder at all: the digits still show
        while (next > 0) reversed += digits[--next];
    }
    return {reversed.rbegin(), reversed.rend()};
}

std::string FormatFraction(const std::string& fraction, std::string_view picture) {
    // A "#" is written up to the last significant digit; a "0" always.
    std::size_t last = fraction.size();  // one past the last digit to write
    std::size_t placeholders = 0;        // counted apart from the literals between them
    for (const char c : picture) {
        if (IsPlaceholder(c)) ++placeholders;
        if (c == '0') last = std::max(last, placeholders);
    }
    std::string out;
    std::size_t digit = 0;
    for (const char c : picture) {
        if (!IsPlaceholder(c)) {
            out += c;
            continue;
        }
        if (digit < last) out += digit < fraction.size() ? fraction[digit] : '0';
        ++digit;
    }
    return out;
}

}  // namespace

std::string Format(double value, std::string_view picture, char separator) {
    if (!std::isfinite(value)) value = 0;
    const auto point = picture.find('.');
    const std::string_view wholePicture = picture.substr(0, point);
    const std::string_view fractionPicture =
        point == std::string_view::npos ? std::string_view{} : picture.substr(point + 1);
    const auto places = static_cast<std::size_t>(
        std::count_if(fractionPicture.begin(), fractionPicture.end(), IsPlaceholder));

    Decimal d = ToDecimal(std::fabs(value));
    RoundTo(d, places);

    std::string out;
    if (value < 0 && !(d.whole.empty() && d.fraction.empty())) out += '-';
    out += FormatWhole(d.whole, wholePicture);
    if (point != std::string_view::npos) {
        out += separator;
        out += FormatFraction(d.fraction, fractionPicture);
    }
    return out;
}

std::optional<double> ReadNumber(std::string_view text, char separator) {
    bool seenSeparator = false;
    bool seenDigit = false;
    std::string plain = "0";  // with a "0" after a final separator, ".5" and "52." read plainly
    for (const char c : text) {
        if (c >= '0' && c <= '9') {
            seenDigit = true;
            plain += c;
        } else if (c == separator && !seenSeparator) {
            seenSeparator = true;
            plain += '.';
        } else {
            return std::nullopt;
        }
    }
    if (!seenDigit) return std::nullopt;
    if (seenSeparator) plain += '0';
    double value = 0;
    const auto [end, ec] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (ec != std::errc() || end != plain.data() + plain.size()) return std::nullopt;
    return value;
}

std::string ShortestText(double value, char separator) {
    std::array<char, 400> buffer{};
    const auto [end, ec] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                         std::chars_format::fixed);
    std::string text = ec == std::errc() ? std::string(buffer.data(), end) : std::string("0");
    std::replace(text.begin(), text.end(), '.', separator);
    return text;
}

std::string Digits(std::int64_t value) {
    std::array<char, 24> buffer{};
    const auto [end, ec] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), end);
}

}  // namespace mirvalde
