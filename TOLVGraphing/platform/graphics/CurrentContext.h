#pragma once

namespace TOLVGraphing {

class DrawingContext;

/// The drawing context that strategies, axes and labels draw into on this thread, or null when there is none (they then draw nothing).
[[nodiscard]] DrawingContext* currentContext();

/// Makes a context the current one of this thread for the life of the scope and restores the former one afterwards. Scopes nest.
/// The context is not owned and has to outlive the scope.
class CurrentContextScope {
public:
    explicit CurrentContextScope(DrawingContext& context);
    ~CurrentContextScope();
    CurrentContextScope(const CurrentContextScope&) = delete;
    CurrentContextScope& operator=(const CurrentContextScope&) = delete;

private:
    DrawingContext* m_former;
};

} // namespace TOLVGraphing
