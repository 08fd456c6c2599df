#pragma once

#include <string>

#include "MachineRegistry.h"
#include "Shell.h"

namespace mirvalde {

// "À propos de Mirvalde" and "Version 5.0.0", from the program's own title and version.
std::string AboutCaption();
std::string VersionLine();

// A value that has no data at all: the search for the system information tool gives up.
struct RunTimeError {};

// Reads a value of the registry into `KeyVal`: a text as it is stored, without its final NUL;
// a 32-bit number as "&h" and two uppercase hexadecimal digits a byte; any other type leaves
// `KeyVal` as it was. False, with `KeyVal` emptied, when the key cannot be opened or the value
// cannot be read (1024 bytes at most). Throws RunTimeError for a value with no data.
bool GetKeyValue(MachineRegistry& registry, MachineRegistry::Key KeyRoot,
                 const std::string& KeyName, const std::string& SubKeyRef, std::string& KeyVal);

// Finds the system information tool in the registry and starts it without waiting. False
// when it is not to be had, or could not be started: the window then tells the player.
bool StartSysInfo(MachineRegistry& registry, Shell& shell);

// What the contact labels open: "MailTo:" and the address; the web address with "http://" in
// front unless it begins with it. Empty for an empty caption, which opens nothing.
std::string MailTarget(const std::string& caption);
std::string UrlTarget(const std::string& caption);

}  // namespace mirvalde
