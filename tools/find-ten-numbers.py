#!/usr/bin/python3
"""Plays the guessing game of a running Mirvalde as a player would, to its tenth number found.

It reads the answers over the accessibility bus and types with real keys (xdotool), so the
game must run on the same X display with accessibility on
(QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1) and a session bus. Needs python3-gi, gir1.2-atspi-2.0,
at-spi2-core and xdotool. Usage: tools/find-ten-numbers.py [NUMBERS]
"""
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def game():
    for _ in range(100):
        desktop = Atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            app = desktop.get_child_at_index(i)
            if app and app.get_name().lower() == "mirvalde":
                return app
        time.sleep(0.1)
    sys.exit("the game is not on the accessibility bus")


def answer(node):
    """The text of the label that answers a proposal, or ''."""
    if node.get_role_name() == "label" and " est " in (node.get_name() or ""):
        return node.get_name()
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        text = answer(child) if child else ""
        if text:
            return text
    return ""


def keys(*names):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *names], check=True)


def main():
    wanted = int(sys.argv[1]) if len(sys.argv) > 1 else 10
    app = game()
    subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "^Mirvalde$",
                    "windowactivate", "--sync"], check=False)
    time.sleep(1)  # the entry box takes the focus once the window is shown
    found, low, high = 0, 1, 100
    while found < wanted:
        guess = (low + high) // 2
        subprocess.run(["xdotool", "type", "--delay", "20", str(guess)], check=True)
        keys("Return")
        text = ""
        for _ in range(20):  # the bus may take a moment to see the new answer
            time.sleep(0.1)
            app.clear_cache()  # the answer's label is hidden, so not listed, until the first one
            text = answer(app)
            # Only the answer to this proposal: the bus may still show the previous one.
            if text.split(" est ")[0].strip() == str(guess):
                break
        if not text and any(app.get_child_at_index(i).get_name() == "Tavrines"
                            for i in range(app.get_child_count())):
            # The tenth number found closes the main window, answer and all.
            found += 1
            break
        if "trop petit" in text:
            low = guess + 1
        elif "trop grand" in text:
            high = guess - 1
        elif "bonne" in text:
            found, low, high = found + 1, 1, 100
            if found < wanted:
                keys("alt+e")  # "Encore ?"
                time.sleep(0.15)
        else:
            sys.exit(f"unexpected answer: {text!r}")
    print(f"found {found} numbers")


if __name__ == "__main__":
    main()
