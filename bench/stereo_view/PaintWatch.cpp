// SPDX-License-Identifier: Apache-2.0
// The application object, which sees when the view has been painted, and with which frame.

#include "PaintWatch.h"

#include "FrameTap.h"
#include "ViewGeometry.h"

#include <QBackingStore>
#include <QEvent>
#include <QImage>
#include <QWidget>

#include <ctime>

namespace {

constexpr QSize pictureSize(752, 480);

std::int64_t threadTime()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace

void PaintWatch::restart()
{
    _latencies.clear();
    _paintingTime = 0;
}

bool PaintWatch::notify(QObject* receiver, QEvent* event)
{
    if (event->type() == QEvent::Paint && receiver == _view)
        _viewPainted = true;
    // The one event in which a window paints what has to be painted and hands it to the screen.
    const bool paints = event->type() == QEvent::UpdateRequest && !_inPainting && _view != nullptr;
    if (!paints)
        return QApplication::notify(receiver, event);

    _inPainting = true;
    _viewPainted = false;
    const std::int64_t begin = threadTime();
    const bool result = QApplication::notify(receiver, event);
    _inPainting = false;
    // cppcheck-suppress knownConditionTrueFalse ; set by the paint event in between
    if (_viewPainted) {
        const std::int64_t end = FrameTap::now();
        _paintingTime += threadTime() - begin;
        const std::optional<std::uint32_t> frame = shownFrame();
        if (frame && *frame != _lastFrame) {
            _lastFrame = *frame;
            _latencies.push_back(static_cast<double>(end - FrameTap::arrivalOf(*frame)) * 1e-6);
        }
    }
    return result;
}

std::optional<std::uint32_t> PaintWatch::shownFrame() const
{
    const QPaintDevice* const device = _view->window()->backingStore()->paintDevice();
    const std::vector<PictureCell> cells =
        cellsOf({PictureArrangement::SideBySide, pictureSize, _view->size()}, ViewPoint());
    if (device->devType() != QInternal::Image || cells.empty())
        return std::nullopt;
    const auto& image = *static_cast<const QImage*>(device);
    const QPoint origin = _view->mapTo(_view->window(), cells.front().target.topLeft());
    const double scale = static_cast<double>(cells.front().target.width()) / pictureSize.width();
    std::uint32_t frame = 0;
    for (int bit = 0; bit < FrameTap::markBits; ++bit) {
        const QPoint middle = origin + (QPointF(FrameTap::markOf(bit).center()) * scale).toPoint();
        const int grey = qGray(image.pixel(middle));
        if (grey > 20 && grey < 235)
            return std::nullopt; // the dark area before the first frame
        frame |= (grey > 127 ? 1U : 0U) << static_cast<unsigned>(bit);
    }
    return frame;
}
