// SPDX-License-Identifier: Apache-2.0
// The worker of a processing node.

#include "ImageProcessingThread.h"

#include "SafeThread.h"

#include <cstring>

namespace {

constexpr char workerName[] = "ImageProcessingThread";
static_assert(sizeof(workerName) <= sizeof(SafeThread::name), "the name must fit");

} // namespace

ImageProcessingThread::ImageProcessingThread()
    : _thread(std::make_unique<SafeThread>(false))
{
    std::memcpy(_thread->name, workerName, sizeof(workerName));
}

ImageProcessingThread::~ImageProcessingThread()
{
    StopProcessing();
}

void ImageProcessingThread::StartProcessing()
{
    if (_running)
        return;
    _running = true;
    // Deliberate: one thread in the worker's life. Once a callable is installed the thread has been started, a
    // second start would create none, and one that is only now coming up may be reading the callable.
    if (!_thread->executing && !_thread->callable) {
        _thread->callable = [this] { Body(); };
        _thread->start();
    }
}

void ImageProcessingThread::StopProcessing()
{
    if (!_running)
        return;
    // In this order, and sequentially consistent: a thread that is just coming up either has set its executing flag
    // in time to be waited for here, or sees in Body() that it is stopped.
    _running = false;
    if (_thread->executing.exchange(false))
        _thread->waitfor();
}

void ImageProcessingThread::Body()
{
    // A stop has overtaken the start. Nobody waits for this thread now, and whoever derives from this class may be
    // going away: no hook.
    if (!_running)
        return;
    try {
        RunHooks();
    } catch (...) {
        // Deliberate: a worker that fails ends, and the rest of the pipeline and the host live on.
    }
}

void ImageProcessingThread::RunHooks()
{
    // Deliberate: locked and unlocked by hand, so that an exception out of ThreadInit() or ThreadExit() leaves the hook
    // lock locked. Nobody locks it again, since a worker's thread runs once, and this mutex may be destroyed locked.
    _hookLock.lock();
    ThreadInit();
    _hookLock.unlock();

    while (IsRunning())
        ThreadStep();

    _hookLock.lock();
    ThreadExit();
    _hookLock.unlock();
}
