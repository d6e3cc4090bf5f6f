// SPDX-License-Identifier: Apache-2.0
// A camera library for tests: logs every call and emits frames on command.

#pragma once

#include <camera/VYRLibrary.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Controls the fake libVYR.so that a test program is linked with. All of it may be called on any thread; emitting
/// calls the host's callback on the calling thread, which plays the library's thread.
namespace FakeVYR {

/// Forgets the log and goes back to the defaults: a camera that opens and starts, with the modes of defaultModes(),
/// and no more. Call it before each test.
void reset();

/// 640 × 480 1x1 at up to 60 fps, 320 × 240 2x2 at up to 60 fps, 320 × 120 2x2 at up to 200 fps.
std::vector<VYRResolutionInfo> defaultModes();

/// What the library offers and answers from now on.
void setModes(const std::vector<VYRResolutionInfo>& modes);
void setOpens(bool opens);
void setStarts(bool starts);
void setVersion(const char* version);           ///< may be null; borrowed
void setText(int id, const std::string& bytes); ///< written as it stands, at most 256 bytes, no zero added
void setFrameSize(int width, int height);       ///< instead of the size of the resolution that was set last

/// Every call in order, for instance "OpenVYR", "Enumerate 1 320 240 5 30", "Set 8 25 0", "Get 7", "StartVYR 1".
std::vector<std::string> calls();
void clearCalls();

/// Called inside each StopVYR, while the callback is still installed: a library that goes on until it has stopped.
void setDuringStop(std::function<void()> function);

/// Whether a callback is installed: between a successful StartVYR and StopVYR.
bool isStreaming();

/// A record as the simulator lays it out, without pictures. The fake keeps a ring of 256, so that a record stays
/// untouched for 255 further frames. Emitting without a callback does nothing.
void emitFrame(std::uint32_t timestamp);
void emitFrameWithTemperature(std::uint32_t timestamp, float temperature);

/// Emits a record of the caller's, with pictures for instance. The caller keeps it while the host may use it.
void emitRecord(const VYRFrameRecord* record);

/// Emits to the callback that was installed last, even after StopVYR: a library that does not stop in time.
void emitLateFrame(std::uint32_t timestamp);
void emitLateRecord(const VYRFrameRecord* record);

} // namespace FakeVYR
