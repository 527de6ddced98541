#pragma once

#include "../PolylineStroker.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace TOLVGraphing::raster {

/// What a stroke covers, from the definition: whether a single place is within half a width of the line, asked for many places in every pixel.
/// The places are those of a Hammersley set: they lie on no lines that an edge could run along, and each half of a pixel, quarter, eighth... has its share of them.
class SampledStroke {
public:
    SampledStroke(const std::vector<Point>& points, const StrokeStyle& style) : m_style(style), m_half(0.5 * style.width)
    {
        double start = 0.0;
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const Point way{points[i + 1].x - points[i].x, points[i + 1].y - points[i].y};
            const double length = std::hypot(way.x, way.y);
            if (length > 0.0)
                m_segments.push_back({points[i], {way.x / length, way.y / length}, length, start});
            start += length;
        }
        for (std::size_t i = 0; i + 1 < m_segments.size(); ++i)
            addCorner(m_segments[i], m_segments[i + 1]);
    }

    /// The coverage of a pixel, 0 to 255.
    double coverage(int x, int y) const
    {
        std::vector<const Segment*> segments;
        for (const Segment& segment : m_segments) {
            const Place middle = segment.placeOf({x + 0.5, y + 0.5});
            if (middle.along < -kHalfDiagonal || middle.along > segment.length + kHalfDiagonal || std::abs(middle.across) > m_half + kHalfDiagonal)
                continue;
            const bool isInside = middle.along > kHalfDiagonal && middle.along < segment.length - kHalfDiagonal && std::abs(middle.across) < m_half - kHalfDiagonal;
            if (isInside && m_style.dash.lengths.empty())
                return 255.0;
            segments.push_back(&segment);
        }
        std::vector<const Corner*> corners;
        for (const Corner& corner : m_corners) {
            if (std::abs(corner.place.x - x - 0.5) <= corner.reach + 0.5 && std::abs(corner.place.y - y - 0.5) <= corner.reach + 0.5)
                corners.push_back(&corner);
        }
        int covered = 0;
        for (int i = 0; i < kPlaces && segments.size() + corners.size() > 0; ++i) {
            const Point place{x + (i + 0.5) / kPlaces, y + (mirrored(i) + 0.5) / kPlaces};
            const bool isCovered = std::any_of(segments.begin(), segments.end(), [&](const Segment* segment) { return covers(*segment, place); })
                || std::any_of(corners.begin(), corners.end(), [&](const Corner* corner) { return covers(*corner, place); });
            covered += isCovered ? 1 : 0;
        }
        return 255.0 * covered / kPlaces;
    }

private:
    static constexpr double kHalfDiagonal = 0.7072;
    static constexpr int kBits = 8;
    static constexpr int kPlaces = 1 << kBits;

    /// The number's bits in the opposite order.
    static int mirrored(int number)
    {
        int result = 0;
        for (int bit = 0; bit < kBits; ++bit)
            result |= ((number >> bit) & 1) << (kBits - 1 - bit);
        return result;
    }

    /// How far along a segment and how far beside it.
    struct Place {
        double along = 0.0;
        double across = 0.0;
    };

    struct Segment {
        Point from;
        Point along;
        double length = 0.0;
        double start = 0.0;

        Place placeOf(Point point) const
        {
            const Point way{point.x - from.x, point.y - from.y};
            return {way.x * along.x + way.y * along.y, along.x * way.y - along.y * way.x};
        }
    };

    /// The wedge that two segments leave open.
    struct Corner {
        Point place;
        Point before;
        Point after;
        double cosine = 0.0;
        bool isPointed = false;
        double reach = 0.0;
    };

    void addCorner(const Segment& before, const Segment& after)
    {
        if (!isPainted(after.start) || !isPainted(after.start - 1e-9))
            return;
        const double turn = std::acos(std::clamp(before.along.x * after.along.x + before.along.y * after.along.y, -1.0, 1.0));
        const double cosine = std::cos(0.5 * turn);
        const bool isPointed = m_style.join == LineJoin::Miter && 1.0 <= m_style.miterLimit * cosine;
        m_corners.push_back({after.from, before.along, after.along, cosine, isPointed, isPointed ? m_half / cosine : m_half});
    }

    bool isPainted(double length) const
    {
        const std::vector<double>& lengths = m_style.dash.lengths;
        if (lengths.empty())
            return true;
        double pattern = 0.0;
        for (const double part : lengths)
            pattern += part;
        double place = std::fmod(length + m_style.dash.phase, pattern);
        std::size_t part = 0;
        while (part + 1 < lengths.size() && place >= lengths[part])
            place -= lengths[part++];
        return part % 2 == 0;
    }

    bool covers(const Segment& segment, Point place) const
    {
        const Place there = segment.placeOf(place);
        return there.along >= 0.0 && there.along <= segment.length && std::abs(there.across) <= m_half && isPainted(segment.start + there.along);
    }

    bool covers(const Corner& corner, Point place) const
    {
        const Point way{place.x - corner.place.x, place.y - corner.place.y};
        if (way.x * corner.before.x + way.y * corner.before.y < 0.0 || way.x * corner.after.x + way.y * corner.after.y > 0.0)
            return false;
        if (m_style.join == LineJoin::Round)
            return std::hypot(way.x, way.y) <= m_half;
        if (corner.isPointed)
            return std::abs(corner.before.x * way.y - corner.before.y * way.x) <= m_half && std::abs(corner.after.x * way.y - corner.after.y * way.x) <= m_half;
        const Point outwards{corner.before.x - corner.after.x, corner.before.y - corner.after.y};
        const double length = std::hypot(outwards.x, outwards.y);
        return length > 0.0 && (way.x * outwards.x + way.y * outwards.y) / length <= m_half * corner.cosine;
    }

    StrokeStyle m_style;
    double m_half;
    std::vector<Segment> m_segments;
    std::vector<Corner> m_corners;
};

} // namespace TOLVGraphing::raster
