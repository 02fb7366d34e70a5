// The growing line with its percentage and the message line beside it. Each window that runs long work has one.
#pragma once

#include <cstdint>

#include "platform/controls.h"

namespace relvane {

struct ProgressGauge {
    Line& linGuage;
    Label& lblPer;
    Label& txtMesege;
};

// The right end of the line at 100 percent.
inline constexpr int gaugeLength = 2400;

// 0 to 100; a larger value widens the line further. Any value but 100 is shown at once: the end of the analysis
// follows 100 directly.
void SetGauge(ProgressGauge& gauge, std::int16_t percent);

// `done` of `total` as SetGauge takes it: rounded to the nearest number, a half to the even one. Error 11 for a total
// of 0; a negative total gives what it gives.
std::int16_t percentOf(std::int32_t done, std::int32_t total);

// Shows the line at 0, before work begins.
void startGauge(ProgressGauge& gauge);

// The line at 0 and hidden. The percentage is left as it stands.
void hideGauge(ProgressGauge& gauge);

// Puts a message into the message line and shows it at once.
void showMessage(ProgressGauge& gauge, TextView message);

// A step of a walk is over: the gauge at the part that is done, and the message.
void showProgress(ProgressGauge& gauge, std::int32_t done, std::int32_t total, TextView message);

} // namespace relvane
