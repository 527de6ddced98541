#pragma once

#include "DrawingContext.h"

namespace TOLVGraphing {

/// Saves a context's graphics state for the life of the scope, so that it is restored on every way out, exceptions included.
class GraphicsStateSaver {
public:
    /// The context is not owned and has to outlive the scope.
    explicit GraphicsStateSaver(DrawingContext& context) : m_context(context) { m_context.saveState(); }
    ~GraphicsStateSaver() { m_context.restoreState(); }
    GraphicsStateSaver(const GraphicsStateSaver&) = delete;
    GraphicsStateSaver& operator=(const GraphicsStateSaver&) = delete;

private:
    DrawingContext& m_context;
};

} // namespace TOLVGraphing
