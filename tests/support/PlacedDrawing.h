#pragma once

#include "RecordedCalls.h"

#include <TOLVGraphing/platform/geometry/AffineTransform.h>
#include <TOLVGraphing/platform/geometry/Rect.h>

#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A text or a filled shape as it ends up in the context's own coordinates, y growing upwards.
struct PlacedMark {
    /// The text; empty for a filled shape.
    std::string text;
    /// The lower-left corner of a text's line box, without a size; the rectangle around a filled shape.
    Rect rect;
    /// What the clip in force leaves visible.
    Rect clip;
    /// The letters stand upright and are not mirrored.
    bool isUpright = true;
};

/// Follows transforms, clips and saved states of recorded lines. Clips are taken as the rectangles around them.
[[nodiscard]] inline std::vector<PlacedMark> placedMarks(const std::vector<std::string>& lines)
{
    struct State {
        AffineTransform transform;
        Rect clip{-1e6, -1e6, 2e6, 2e6};
    };
    std::vector<State> states(1);
    std::vector<PlacedMark> marks;
    for (const std::string& line : lines) {
        const RecordedCall call(line);
        State& state = states.back();
        if (call.operation() == "save")
            states.push_back(State(state));
        else if (call.operation() == "restore")
            states.pop_back();
        else if (call.operation() == "transform")
            state.transform.concatenate(call.transform());
        else if (call.operation() == "clip")
            state.clip = intersectionRect(state.clip, state.transform.apply(call.path().bounds()));
        else if (call.operation() == "fill")
            marks.push_back({"", state.transform.apply(call.path().bounds()), state.clip, true});
        else if (call.operation() == "text")
            marks.push_back({call.drawnText(), {state.transform.apply(call.textOrigin()), {}}, state.clip, state.transform.a > 0.0 && state.transform.d > 0.0});
    }
    return marks;
}

} // namespace TOLVGraphing::testing_support
