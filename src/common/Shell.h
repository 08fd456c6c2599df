#pragma once

#include <string>

namespace mirvalde {

// What the desktop does for the game: open an address with its handler, start a program.
class Shell {
  public:
    virtual ~Shell() = default;
    // Starts a command line without waiting for it; false when it could not be started.
    virtual bool StartDetached(const std::string& commandLine) = 0;
    // Opens an address ("MailTo:...", "http://...") with the desktop's handler.
    virtual bool Open(const std::string& address) = 0;
};

class DesktopShell final : public Shell {
  public:
    bool StartDetached(const std::string& commandLine) override;
    bool Open(const std::string& address) override;
};

}  // namespace mirvalde
