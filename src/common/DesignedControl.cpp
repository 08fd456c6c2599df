#include "DesignedControl.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <cmath>
#include <vector>

#include "Look.h"
#include "ShapeControl.h"

namespace mirvalde {
namespace {

Qt::Alignment AlignmentOf(TextAlign align) {
    switch (align) {
        case TextAlign::Center:
            return Qt::AlignHCenter;
        case TextAlign::Right:
            return Qt::AlignRight;
        case TextAlign::Left:
            break;
    }
    return Qt::AlignLeft;
}

// The desktop's own colours stand in for the system colours the design names.
void ApplyBackground(QWidget* widget, const ControlDesign& design) {
    QColor colour;
    switch (design.background) {
        case Background::Default:
            return;
        case Background::Fixed:
            colour = ColourOf(design.colour);
            break;
        case Background::Menu:
            colour = QApplication::palette().color(QPalette::Base);
            break;
        case Background::ScrollBar:
            colour = QApplication::palette().color(QPalette::Midlight);
            break;
    }
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, colour);
    palette.setColor(QPalette::Button, colour);
    palette.setColor(QPalette::Base, colour);
    widget->setPalette(palette);
    // Labels and picture boxes paint their own background; buttons and boxes take it from
    // their palette.
    if (design.kind == ControlKind::Label || design.kind == ControlKind::PictureBox) {
        widget->setAutoFillBackground(true);
    }
}

bool IsDrawnOnSurface(ControlKind kind) {
    return kind == ControlKind::Label || kind == ControlKind::Image || kind == ControlKind::Shape ||
           kind == ControlKind::Line;
}

constexpr const char* kDrawnOnSurface = "mirvalde.drawnOnSurface";
constexpr const char* kAutoSizeAnchor = "mirvalde.autoSizeAnchor";

QWidget* CreateWidget(const ControlDesign& design, QWidget* parent) {
    const QString caption = FromUtf8(design.caption);
    switch (design.kind) {
        case ControlKind::CommandButton:
            return new QPushButton(caption, parent);
        case ControlKind::Frame:
            return new QGroupBox(caption, parent);
        case ControlKind::OptionButton:
            return new QRadioButton(caption, parent);
        case ControlKind::Label: {
            auto* label = new QLabel(parent);
            label->setTextFormat(Qt::PlainText);
            label->setText(caption);
            label->setAlignment(AlignmentOf(design.align) | Qt::AlignTop);
            return label;
        }
        case ControlKind::Image: {
            auto* image = new QLabel(parent);
            image->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            return image;
        }
        case ControlKind::TextBox: {
            auto* box = new QLineEdit(caption, parent);
            box->setAlignment(AlignmentOf(design.align) | Qt::AlignVCenter);
            return box;
        }
        case ControlKind::PictureBox: {
            auto* box = new QFrame(parent);
            box->setFrameStyle(QFrame::Panel | QFrame::Sunken);
            return box;
        }
        case ControlKind::CheckBox:
            return new QCheckBox(caption, parent);
        case ControlKind::Line: {
            // A line as wide as the control is high, in the control's colour.
            auto* line = new QWidget(parent);
            line->setAutoFillBackground(true);
            return line;
        }
        case ControlKind::Shape:
            return new ShapeControl(design.shape, design.background == Background::Fixed,
                                    ColourOf(design.colour), parent);
    }
    return new QWidget(parent);
}

}  // namespace

QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QColor ColourOf(std::uint32_t bgr) {
    return QColor(static_cast<int>(bgr & 0xff), static_cast<int>((bgr >> 8) & 0xff),
                  static_cast<int>((bgr >> 16) & 0xff));
}

QRect ToPixels(const TwipRect& place) {
    const auto px = [](double twips) {
        return static_cast<int>(std::lround(twips / kTwipsPerPixel));
    };
    return {px(place.left), px(place.top), px(place.width), px(place.height)};
}

QFont FontOf(const FontDesign& font, const QFont& windowFont) {
    if (font.family.empty()) return windowFont;
    QFont result = DesignFont(FromUtf8(font.family));
    result.setPointSizeF(font.points);
    result.setBold(font.bold);
    result.setItalic(false);
    result.setUnderline(font.underline);
    result.setStrikeOut(false);
    return result;
}

QWidget* CreateControl(const ControlDesign& design, QWidget* parent) {
    return ApplyDesign(CreateWidget(design, parent), design);
}

QWidget* ApplyDesign(QWidget* widget, const ControlDesign& design) {
    QWidget* parent = widget->parentWidget();
    widget->setObjectName(FromUtf8(design.name));
    widget->setFont(FontOf(design.font, parent->font()));
    if (!design.tooltip.empty()) widget->setToolTip(FromUtf8(design.tooltip));
    // A shape's colour is its fill, not a background.
    if (design.kind != ControlKind::Shape) ApplyBackground(widget, design);
    if (design.foreground != kDesktopText) {
        QPalette palette = widget->palette();
        palette.setColor(QPalette::WindowText, ColourOf(design.foreground));
        palette.setColor(QPalette::ButtonText, ColourOf(design.foreground));
        widget->setPalette(palette);
    }
    widget->setGeometry(ToPixels(design.place));
    widget->setVisible(design.visible);
    if (IsDrawnOnSurface(design.kind)) widget->setProperty(kDrawnOnSurface, true);
    // A picture box in the tab order takes the focus, as any control there does.
    if (design.kind == ControlKind::PictureBox && design.tabIndex >= 0) {
        widget->setFocusPolicy(Qt::TabFocus);
    }
    if (design.autoSize) {
        // The edge the text is aligned on stays where it was designed.
        const QRect place = widget->geometry();
        const int anchor = design.align == TextAlign::Right    ? place.right() + 1
                           : design.align == TextAlign::Center ? place.center().x()
                                                               : place.left();
        widget->setProperty(kAutoSizeAnchor, anchor);
        if (auto* label = qobject_cast<QLabel*>(widget)) FitLabelToText(label);
    }
    return widget;
}

void DesignedControls::Build(std::span<const ControlDesign> design, QWidget* surface,
                             const Maker& make) {
    std::vector<std::pair<int, QWidget*>> tabOrder;
    for (const ControlDesign& row : design) {
        QWidget* parent = row.parent.empty() ? surface : Find(row.parent);
        QWidget* widget = make ? make(row, parent) : nullptr;
        widget = widget ? ApplyDesign(widget, row) : CreateControl(row, parent);
        controls_.emplace(std::string(row.name), widget);
        if (row.tabIndex >= 0 && widget->focusPolicy() != Qt::NoFocus) {
            tabOrder.emplace_back(row.tabIndex, widget);
        }
    }
    std::sort(tabOrder.begin(), tabOrder.end());
    for (std::size_t i = 1; i < tabOrder.size(); ++i) {
        QWidget::setTabOrder(tabOrder[i - 1].second, tabOrder[i].second);
    }
    StackDrawnControlsBeneath(surface);
}

QWidget* DesignedControls::Find(std::string_view name) const {
    const auto found = controls_.find(name);
    return found == controls_.end() ? nullptr : found->second;
}

QFont DialogFont() {
    QFont font = DesignFont(QStringLiteral("MS Sans Serif"));
    font.setPointSizeF(8.25);
    return font;
}

void FitLabelToText(QLabel* label) {
    const QVariant anchor = label->property(kAutoSizeAnchor);
    if (!anchor.isValid()) return;
    const QSize size = label->sizeHint();
    int left = anchor.toInt();
    if (label->alignment() & Qt::AlignRight) left -= size.width();
    if (label->alignment() & Qt::AlignHCenter) left -= size.width() / 2;
    QRect place(left, label->y(), size.width(), size.height());
    // A text wider than the window (a very long name) is cut at the window's edges.
    if (const QWidget* parent = label->parentWidget()) {
        place = place.intersected(QRect(0, place.y(), parent->width(), place.height()));
    }
    label->setGeometry(place);
}

void StackDrawnControlsBeneath(QWidget* surface) {
    // Lowering from the last to the first keeps the drawn controls in their own order.
    const QObjectList children = surface->children();
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        auto* widget = qobject_cast<QWidget*>(*it);
        if (!widget || widget->isWindow()) continue;
        StackDrawnControlsBeneath(widget);
        if (widget->property(kDrawnOnSurface).toBool()) widget->lower();
    }
}

}  // namespace mirvalde
