#pragma once

class QWidget;

namespace mirvalde {

// Centres a top-level window on its screen, the desktop's frame counted once it is known.
void CentreOnScreen(QWidget* window);

// The frame is known only a moment after the window appears: centres the window again once
// it has one, unless it was maximised or minimised meanwhile. Tries every 25 ms, `tries` times.
void CentreOnceFramed(QWidget* window, int tries = 20);

// Called at every show: centres again, frame counted, at the first one only, so that a window
// restored or shown again stays where the player put it.
void CentreOnFirstShow(QWidget* window);

}  // namespace mirvalde
