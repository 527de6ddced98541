#include "PathPoints.h"

namespace TOLVGraphing {

std::vector<Point> onPathPoints(const Path& path)
{
    std::vector<Point> points;
    points.reserve(path.verbs().size());
    auto next = path.points().begin();
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::Close)
            continue;
        if (verb == Path::Verb::Curve)
            next += 2;
        points.push_back(*next++);
    }
    return points;
}

} // namespace TOLVGraphing
