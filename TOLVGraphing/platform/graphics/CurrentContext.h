#pragma once

#include <TOLVMath/Export.h>

namespace TOLVGraphing {

class DrawingContext;

/// The drawing context that strategies, axes and labels draw into on this thread, or null when there is none (they then draw nothing). Not owned by the caller; valid while its scope lasts.
[[nodiscard]] TOLV_EXPORT DrawingContext* currentContext();

/// Makes a context the current one of this thread for the life of the scope and restores the former one afterwards. Scopes nest.
/// The context is not owned and has to outlive the scope, which ends on the thread that began it, before those that began before it.
class TOLV_EXPORT CurrentContextScope {
public:
    /// Makes the context the current one, with coordinates that are not flipped.
    explicit CurrentContextScope(DrawingContext& context);
    ~CurrentContextScope();
    CurrentContextScope(const CurrentContextScope&) = delete;
    CurrentContextScope& operator=(const CurrentContextScope&) = delete;

private:
    DrawingContext* m_former;
    bool m_formerIsFlipped;
};

/// True while the y coordinates of the current drawing grow downwards, as in a flipped view. Texts then stand upright below their point; a context that has just become current is not flipped.
[[nodiscard]] TOLV_EXPORT bool coordinatesAreFlipped();

/// Says for the life of the scope how y coordinates grow; whoever opens it applies the transform that makes it so.
class TOLV_EXPORT FlippedCoordinatesScope {
public:
    /// True for y growing downwards. The end of the scope brings back what was before.
    explicit FlippedCoordinatesScope(bool areFlipped);
    ~FlippedCoordinatesScope();
    FlippedCoordinatesScope(const FlippedCoordinatesScope&) = delete;
    FlippedCoordinatesScope& operator=(const FlippedCoordinatesScope&) = delete;

private:
    bool m_former;
};

} // namespace TOLVGraphing
