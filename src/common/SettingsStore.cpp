#include "SettingsStore.h"

#include <charconv>

namespace mirvalde {

bool ParseWholeNumber(const std::string& text, std::int32_t& out) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return false;
    const auto last = text.find_last_not_of(" \t");
    const char* begin = text.data() + first;
    const char* end = text.data() + last + 1;
    // from_chars takes a '-' but not a '+', and after a '+' must not find another sign.
    if (*begin == '+' && ++begin != end && *begin == '-') return false;
    std::int32_t value = 0;
    const auto [stop, ec] = std::from_chars(begin, end, value);
    if (ec != std::errc() || stop != end) return false;
    out = value;
    return true;
}

std::int32_t SettingsStore::ReadNumber(const std::string& section, const std::string& key,
                                       std::int32_t fallback) const {
    std::int32_t value = fallback;
    return ParseWholeNumber(Read(section, key, {}), value) ? value : fallback;
}

std::string MemorySettingsStore::Read(const std::string& section, const std::string& key,
                                      const std::string& fallback) const {
    const auto found = values_.find({section, key});
    return found == values_.end() ? fallback : found->second;
}

bool MemorySettingsStore::Write(const std::string& section, const std::string& key,
                                const std::string& value) {
    values_[{section, key}] = value;
    return true;
}

}  // namespace mirvalde
