// SPDX-License-Identifier: Apache-2.0
// Measures the ticks of an event loop.

#pragma once

/// Leaves out the first `warmUp` ticks, measures the `ticks` after them, and then ends the event loop.
void startMetering(long warmUp, long ticks);

/// To be called once a tick, on the GUI thread. Exported for the app.
extern "C" __attribute__((visibility("default"))) void countTick();

/// Processor time of the GUI thread a tick, in nanoseconds; after the event loop.
double nanosecondsPerTick();

/// Calls for memory on the GUI thread a tick; after the event loop.
double allocationsPerTick();
