#pragma once

#include <functional>

// Threads that large strokes are shared with. They begin with the first stroke that is worth it, sleep without work, and end with the program. What is drawn never depends on how many there are.

namespace TOLVGraphing::raster {

/// How many threads may work beside the caller's: from 0, for none, to three. At first one less than the processor has cores. A number outside of that is moved to its nearer end.
/// Threads beyond a lower number have ended when the function returns. Not to be called from a task.
void setStrokeWorkerCount(int count);
[[nodiscard]] int strokeWorkerCount();

/// Says that there is work in a moment, so that sleeping threads are awake by then. Awake they wait for less than a quarter of a millisecond.
void rouseStrokeWorkers();

/// Calls the task with all numbers from 0 to before `count`, in any order and from several threads at a time, and returns when all calls have. While another thread's tasks are
/// shared, in a task, in a forked process and where threads cannot be had, the caller does all of them in their order.
/// When a call throws, those not yet begun are left out, and the first exception is thrown on.
void runSideBySide(int count, const std::function<void(int)>& task);

} // namespace TOLVGraphing::raster
