#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers as the player reads and types them. Everything here is independent of the C
// library's locale: the decimal separator of the player's notation is passed in.
namespace mirvalde {

// Writes `value` with a format picture: "0" is a digit always written, "#" a digit written
// only where the number has one, "." the decimal separator, and any other character (a
// blank) a literal that is always written. The value is rounded to the picture's decimal
// places, a half away from zero. Whole digits beyond the picture are kept on the left.
std::string Format(double value, std::string_view picture, char separator);

// Reads digits with at most one separator, which may stand first or last ("52", ",5",
// "52,"). Anything else, or no digit at all, is not a number.
std::optional<double> ReadNumber(std::string_view text, char separator);

// The shortest text that reads back as `value` ("52", "52,01").
std::string ShortestText(double value, char separator);

// Plain decimal digits of a whole number, with a '-' when negative.
std::string Digits(std::int64_t value);

}  // namespace mirvalde
