// SPDX-License-Identifier: Apache-2.0
// The application object, which sees when the view has been painted, and with which frame.

#pragma once

#include <QApplication>

#include <cstdint>
#include <optional>
#include <vector>

/// Reads the marks that FrameTap leaves in the pictures out of what was painted. Thread: GUI thread.
class PaintWatch : public QApplication
{
public:
    using QApplication::QApplication;

    /// Watches a view that shows both pictures side by side.
    void watch(QWidget* view) { _view = view; }

    /// Forgets what was measured so far.
    void restart();

    bool notify(QObject* receiver, QEvent* event) override;

    /// From the arrival of a frame to the end of the painting that shows it, in milliseconds; once a frame.
    const std::vector<double>& latencies() const { return _latencies; }

    /// Processor time of all paintings of the view, handing them to the screen included, in nanoseconds.
    std::int64_t paintingTime() const { return _paintingTime; }

private:
    std::optional<std::uint32_t> shownFrame() const;

    QWidget* _view = nullptr;
    bool _inPainting = false;
    bool _viewPainted = false;
    std::uint32_t _lastFrame = 0;
    std::vector<double> _latencies;
    std::int64_t _paintingTime = 0;
};
