// SPDX-License-Identifier: Apache-2.0
// The controls beside the pictures.

#include "ControlPanel.h"

#include "GreyHistogram.h"
#include "HistogramView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

#include <initializer_list>

namespace {

constexpr int fullRange = 100;
constexpr QMargins groupMargins(9, 6, 9, 7);

QString noFigure()
{
    return QStringLiteral("\u2013");
}

QString wholeNumber(std::uint64_t number)
{
    return QLocale().toString(static_cast<qulonglong>(number));
}

QString decimal(double number, int places)
{
    return QLocale().toString(number, 'f', places);
}

/// What a title says, without the letter that goes with Alt.
QString withoutMnemonic(QString title)
{
    return title.remove(QLatin1Char('&'));
}

bool isLetterKey(const QKeyEvent& event)
{
    const bool plain = (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    return plain && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
}

} // namespace

/// Keeps input from controls that is meant for the window or the panel. Not the panel itself: that is asked about
/// its scroll bars' events, too.
class ControlPanel::InputGuard : public QObject
{
public:
    using QObject::QObject;

    void protect(QWidget* control)
    {
        control->setFocusPolicy(Qt::StrongFocus); // which the wheel does not give
        control->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!isKept(*static_cast<QWidget*>(watched), *event))
            return false;
        event->ignore(); // the parent gets it
        return true;
    }

private:
    static bool isKept(const QWidget& control, const QEvent& event)
    {
        // Whoever scrolls the panel would change whatever passes under the cursor.
        if (event.type() == QEvent::Wheel)
            return !control.hasFocus();
        // A number box would swallow letters, and a list would search for them: neither is of use here, while the
        // window has keys of its own.
        return event.type() == QEvent::KeyPress && isLetterKey(static_cast<const QKeyEvent&>(event));
    }
};

ControlPanel::ControlPanel(QWidget* parent)
    : QScrollArea(parent)
    , _inputGuard(new InputGuard(this))
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus); // it scrolls to the control that has the focus

    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(8, 6, 8, 6);
    column->setSpacing(6);
    column->addWidget(buildCameraGroup());
    column->addWidget(buildPictureGroup());
    column->addWidget(buildStreamGroup());
    column->addStretch();
    setWidget(content);
    // Rather wider than cut off, in a large font or with the scroll bar beside it.
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    setMinimumWidth(content->minimumSizeHint().width() + scrollBar);
    showFigures(StreamFigures());
}

QWidget* ControlPanel::buildCameraGroup()
{
    auto* const group = new QGroupBox(tr("Camera"));
    auto* const grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    //: The camera sees to it by itself. As short as it can be.
    const QString autoText = tr("auto");
    //: The light is off. As short as it can be.
    const QString offText = tr("off");
    _exposure =
        addNumber(grid, QStringLiteral("exposure"),
                  {tr("&Exposure"), tr("How long the sensors gather light; 0 leaves it to the camera"), autoText},
                  &ControlPanel::exposureChanged);
    _gain = addNumber(grid, QStringLiteral("gain"),
                      {tr("&Gain"), tr("How much the signal is amplified; 0 leaves it to the camera"), autoText},
                      &ControlPanel::gainChanged);
    _led = addNumber(grid, QStringLiteral("led"),
                     {tr("&LED"), tr("How bright the camera's light is; 0 turns it off"), offText},
                     &ControlPanel::ledChanged);

    auto* const flags = new QGridLayout; // the wider ones together, so that the panel can be narrow
    _verticalFlip = addFlag(flags, 0, 0, QStringLiteral("verticalFlip"), &ControlPanel::verticalFlipChanged);
    _verticalFlip->setText(tr("&Upside down"));
    _verticalFlip->setToolTip(tr("Exchanges top and bottom of the pictures"));
    _horizontalFlip = addFlag(flags, 0, 1, QStringLiteral("horizontalFlip"), &ControlPanel::horizontalFlipChanged);
    _horizontalFlip->setText(tr("&Mirror"));
    _horizontalFlip->setToolTip(tr("Exchanges left and right of each picture"));
    _swapCameras = addFlag(flags, 1, 0, QStringLiteral("swapCameras"), &ControlPanel::swapCamerasChanged);
    _swapCameras->setText(tr("S&wap cameras"));
    _swapCameras->setToolTip(tr("Exchanges the left and the right picture"));
    _undistort = addFlag(flags, 1, 1, QStringLiteral("undistort"), &ControlPanel::undistortChanged);
    _undistort->setText(tr("U&ndistort"));
    _undistort->setToolTip(tr("Takes the distortion by the lenses out of the pictures"));

    auto* const rows = new QVBoxLayout(group);
    rows->setContentsMargins(groupMargins);
    rows->addLayout(grid);
    rows->addLayout(flags);
    return group;
}

QSlider* ControlPanel::addNumber(QGridLayout* grid, const QString& name, const NumberTexts& texts, NumberSignal changed)
{
    auto* const slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(name + QStringLiteral("Slider"));
    slider->setRange(0, fullRange);
    slider->setPageStep(10);
    slider->setMinimumWidth(60);
    auto* const box = new QSpinBox;
    box->setObjectName(name + QStringLiteral("Box"));
    box->setRange(0, fullRange);
    box->setSpecialValueText(texts.zero);
    box->setKeyboardTracking(false);
    // Styles ask for too little on a screen that is somewhat denser than usual, where the arrows are wider.
    box->setMinimumWidth(box->sizeHint().width() + box->fontMetrics().averageCharWidth());
    auto* const label = new QLabel(texts.title);
    label->setBuddy(box);
    for (QWidget* const control : std::initializer_list<QWidget*>{slider, box}) {
        control->setAccessibleName(withoutMnemonic(texts.title));
        control->setToolTip(texts.toolTip);
        _inputGuard->protect(control);
    }

    const int row = grid->rowCount();
    grid->addWidget(label, row, 0);
    grid->addWidget(slider, row, 1);
    grid->addWidget(box, row, 2);

    connect(slider, &QSlider::valueChanged, box, &QSpinBox::setValue);
    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), slider, &QSlider::setValue);
    connect(slider, &QSlider::valueChanged, this, changed);
    connect(slider, &QSlider::valueChanged, this, &ControlPanel::choicesChanged);
    return slider;
}

QCheckBox* ControlPanel::addFlag(QGridLayout* grid, int row, int column, const QString& name, FlagSignal changed)
{
    auto* const box = new QCheckBox;
    box->setObjectName(name);
    grid->addWidget(box, row, column);
    connect(box, &QCheckBox::toggled, this, changed);
    connect(box, &QCheckBox::toggled, this, &ControlPanel::choicesChanged);
    return box;
}

QWidget* ControlPanel::buildPictureGroup()
{
    _arrangement = new QComboBox;
    _arrangement->setObjectName(QStringLiteral("arrangement"));
    _arrangement->setAccessibleName(tr("Arrangement of the pictures"));
    _arrangement->setToolTip(tr("How the pictures are arranged.\n"
                                "In them, the wheel or + and - zoom, dragging or the arrow keys move,\n"
                                "and a double-click or 0 shows everything again."));
    for (const PictureArrangement arrangement : allArrangements)
        _arrangement->addItem(arrangementTitle(arrangement), QVariant::fromValue(arrangement));
    _inputGuard->protect(_arrangement);
    connect(_arrangement, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ControlPanel::onArrangementIndex);

    _histogram = new HistogramView;
    _histogram->setObjectName(QStringLiteral("histogram"));
    _brightness = new QLabel(noFigure());
    _brightness->setObjectName(QStringLiteral("brightnessLabel"));

    auto* const save = new QPushButton(tr("Save &pictures (S)"));
    save->setObjectName(QStringLiteral("saveButton"));
    save->setToolTip(tr("Saves the left and the right picture as PNG files in the pictures folder"));
    connect(save, &QPushButton::clicked, this, &ControlPanel::saveRequested);
    _saved = new QLabel;
    _saved->setObjectName(QStringLiteral("savedLabel"));
    _saved->setAlignment(Qt::AlignHCenter);
    _saved->setTextFormat(Qt::PlainText);
    _saved->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // never widens the panel
    _saved->hide();

    auto* const group = new QGroupBox(tr("Picture"));
    auto* const rows = new QVBoxLayout(group);
    rows->setContentsMargins(groupMargins);
    rows->addWidget(_arrangement);
    rows->addWidget(_histogram);
    rows->addWidget(_brightness);
    rows->addWidget(save);
    rows->addWidget(_saved);
    return group;
}

QWidget* ControlPanel::buildStreamGroup()
{
    auto* const group = new QGroupBox(tr("Stream"));
    auto* const form = new QFormLayout(group);
    form->setContentsMargins(groupMargins);
    form->setVerticalSpacing(3);
    _pictureSize = addFigure(form, tr("Picture size"), QStringLiteral("pictureSizeLabel"));
    _frameRate = addFigure(form, tr("Frame rate"), QStringLiteral("frameRateLabel"));
    _dropped = addFigure(form, tr("Dropped frames"), QStringLiteral("droppedLabel"));
    _unreadable = addFigure(form, tr("Unreadable frames"), QStringLiteral("unreadableLabel"));
    _nodeTime = addFigure(form, tr("Node time"), QStringLiteral("nodeTimeLabel"));
    return group;
}

QLabel* ControlPanel::addFigure(QFormLayout* form, const QString& title, const QString& name)
{
    auto* const figure = new QLabel;
    figure->setObjectName(name);
    figure->setAlignment(Qt::AlignRight);
    form->addRow(title, figure);
    return figure;
}

void ControlPanel::setChoices(const ViewChoices& choices)
{
    _exposure->setValue(choices.exposure);
    _gain->setValue(choices.gain);
    _led->setValue(choices.led);
    _horizontalFlip->setChecked(choices.horizontalFlip);
    _verticalFlip->setChecked(choices.verticalFlip);
    _swapCameras->setChecked(choices.swapCameras);
    _undistort->setChecked(choices.undistort);
    _arrangement->setCurrentIndex(_arrangement->findData(QVariant::fromValue(choices.arrangement)));
}

ViewChoices ControlPanel::choices() const
{
    ViewChoices choices;
    choices.exposure = _exposure->value();
    choices.gain = _gain->value();
    choices.led = _led->value();
    choices.horizontalFlip = _horizontalFlip->isChecked();
    choices.verticalFlip = _verticalFlip->isChecked();
    choices.swapCameras = _swapCameras->isChecked();
    choices.undistort = _undistort->isChecked();
    choices.arrangement = _arrangement->currentData().value<PictureArrangement>();
    return choices;
}

void ControlPanel::showFigures(const StreamFigures& figures)
{
    const StreamCounts& counts = figures.counts;
    const bool rateKnown = figures.flowing && counts.framesPerSecond > 0.0F;
    _pictureSize->setText(
        figures.pictureSize.isEmpty()
            ? noFigure()
            : QStringLiteral("%1 \u00D7 %2").arg(figures.pictureSize.width()).arg(figures.pictureSize.height()));
    _frameRate->setText(rateKnown ? tr("%1 fps").arg(decimal(static_cast<double>(counts.framesPerSecond), 1))
                                  : noFigure());
    _dropped->setText(wholeNumber(counts.dropped));
    _dropped->setToolTip(tr("%1 frames were shown").arg(wholeNumber(counts.shown)));
    _unreadable->setText(wholeNumber(counts.unreadable));
    _nodeTime->setText(figures.flowing ? QStringLiteral("%1 ms").arg(decimal(figures.nodeMilliseconds, 2))
                                       : noFigure());
}

void ControlPanel::showHistograms(const GreyHistogram& left, const GreyHistogram& right)
{
    _histogram->showHistograms(left, right);
    _brightness->setText(
        tr("Mean %1, fully white %2 %").arg(decimal(left.mean(), 0), decimal(left.whiteShare() * 100.0, 1)));
}

void ControlPanel::showSaved(const QString& text, const QString& toolTip)
{
    _saved->setText(text);
    _saved->show();
    _saved->setToolTip(toolTip);
}

void ControlPanel::onArrangementIndex(int)
{
    emit arrangementChanged(_arrangement->currentData().value<PictureArrangement>());
    emit choicesChanged();
}
