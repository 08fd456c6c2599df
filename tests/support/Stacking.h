#pragma once

#include <QAbstractButton>
#include <QFrame>
#include <QLineEdit>
#include <QStringList>
#include <QWidget>

namespace mirvalde::testing {

// Buttons, boxes, frames and picture boxes that a visible sibling stacked above them overlaps:
// on the player's screen something would be painted over them. Every window checks it.
inline QStringList CoveredControls(QWidget* surface) {
    QStringList covered;
    const auto solid = [](QWidget* w) {
        return qobject_cast<QAbstractButton*>(w) || qobject_cast<QLineEdit*>(w) ||
               (qobject_cast<QFrame*>(w) && !w->inherits("QLabel"));
    };
    QList<QWidget*> children;
    for (QObject* child : surface->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget && !widget->isWindow() && !widget->isHidden()) children.append(widget);
    }
    // Children are listed from the bottom of the stack to its top.
    for (qsizetype below = 0; below < children.size(); ++below) {
        if (!solid(children[below])) continue;
        for (qsizetype above = below + 1; above < children.size(); ++above) {
            if (children[above]->geometry().intersects(children[below]->geometry())) {
                covered << children[below]->objectName() + QStringLiteral(" under ") +
                               children[above]->objectName();
            }
        }
    }
    for (QWidget* child : children) covered << CoveredControls(child);
    return covered;
}

}  // namespace mirvalde::testing
