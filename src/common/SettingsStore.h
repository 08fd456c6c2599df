#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace mirvalde {

// Per-user text values addressed by section and key, for this program.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    // The stored text, or `fallback` when there is none.
    virtual std::string Read(const std::string& section, const std::string& key,
                             const std::string& fallback) const = 0;
    // Creates or replaces the value; false when it could not be stored (a full disk, a
    // read-only file), so that the caller can tell the player.
    virtual bool Write(const std::string& section, const std::string& key,
                       const std::string& value) = 0;

    // A whole number stored as decimal text. Text that is not one, or does not fit in 32
    // bits, gives `fallback`: a hand-edited file never breaks the game.
    std::int32_t ReadNumber(const std::string& section, const std::string& key,
                            std::int32_t fallback) const;
};

// Whole number from decimal text: blanks around it and a sign are allowed, nothing else.
bool ParseWholeNumber(const std::string& text, std::int32_t& out);

// Keeps the values in memory only: for tests, and for a run whose store cannot be opened.
class MemorySettingsStore final : public SettingsStore {
  public:
    std::string Read(const std::string& section, const std::string& key,
                     const std::string& fallback) const override;
    bool Write(const std::string& section, const std::string& key,
               const std::string& value) override;

  private:
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

}  // namespace mirvalde
