#include "TOLVLabel.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr EdgeInsets kDefaultLabelInsets{3.0, 5.0, 3.0, 5.0};

} // namespace

std::shared_ptr<TOLVLabel> TOLVLabel::labelWithAttributedString(AttributedString label, const Rect& rect)
{
    auto result = std::make_shared<TOLVLabel>();
    result->setLabel(std::move(label));
    result->setRect(rect);
    return result;
}

bool TOLVLabel::overlapsLabelInArray(std::span<const std::shared_ptr<TOLVLabel>> labels, const EdgeInsets& withInsets) const
{
    return std::any_of(labels.begin(), labels.end(), [&](const auto& placed) {
        if (!placed)
            return false;
        const Rect& r = placed->rect();
        if (!r.valid())
            return false;
        return intersectsRect(
            {r.x() - withInsets.left, r.y() - withInsets.bottom, r.width() + withInsets.left + withInsets.right, r.height() + withInsets.top + withInsets.bottom}, m_rect);
    });
}

bool TOLVLabel::overlapsLabelInArray(std::span<const std::shared_ptr<TOLVLabel>> labels) const
{
    return overlapsLabelInArray(labels, kDefaultLabelInsets);
}

bool TOLVLabel::liesOutsideRect(const Rect& rect, bool isVertical) const
{
    if (isVertical) {
        const double center = m_rect.y() + 0.5 * m_rect.height();
        return center > rect.maxY() || rect.y() > center;
    }
    const double center = m_rect.x() + 0.5 * m_rect.width();
    return center > rect.maxX() || rect.x() > center;
}

void TOLVLabel::draw() const
{
    m_label.drawAtPoint(m_rect.origin);
}

} // namespace TOLVGraphing
