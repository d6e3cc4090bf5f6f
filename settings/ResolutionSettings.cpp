// SPDX-License-Identifier: Apache-2.0
// Properties of the capture mode, and how an edit of one finds its way to a supported mode.

#include "ResolutionSettings.h"

#include "ResolutionTable.h"
#include "ResolutionVisualization.h"
#include "SensorGeometry.h"
#include "SettingsLogging.h"

#include <camera/BinningNames.h>

#include <QtEnumEditorFactory>
#include <QtEnumPropertyManager>
#include <QtGroupBoxPropertyBrowser>
#include <QtGroupPropertyManager>
#include <QtIntPropertyManager>
#include <QtSliderFactory>
#include <QtSpinBoxFactory>

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int sizeStep = 4;             // pixels
constexpr float sensorPixelSize = 5.0F; // widget pixels: large enough to tell the cells apart unbinned

QStringList binningNames()
{
    return binningCodeByName().keys();
}

/// Names the editors in a browser, which are made in the order of their properties, for those who cannot see what
/// stands beside them.
template<class Editor>
void nameEditors(const QWidget& browser, const QStringList& names)
{
    const QList<Editor*> editors = browser.findChildren<Editor*>();
    for (int i = 0; i < std::min(editors.size(), names.size()); ++i)
        editors.at(i)->setAccessibleName(names.at(i));
}

} // namespace

ResolutionSettings::ResolutionSettings(const VYRResolutionInfo& resolution, const ResolutionTable& table,
                                       QWidget* parent)
    : QWidget(parent)
    , _table(table)
    , _resolution(resolution)
    , _intManager(new QtIntPropertyManager(this))
    , _enumManager(new QtEnumPropertyManager(this))
    , _groupManager(new QtGroupPropertyManager(this))
    , _spinBoxFactory(new QtSpinBoxFactory(this))
    , _sliderFactory(new QtSliderFactory(this))
    , _enumFactory(new QtEnumEditorFactory(this))
    , _visualization(new ResolutionVisualization(table, resolution, this))
{
    createProperties();
    layOut();
    setResolution(resolution);
    _modified = false;
    connect(_visualization, &ResolutionVisualization::CameraResolutionChanged, this,
            &ResolutionSettings::setResolutionFromGui);
    connect(_intManager, &QtIntPropertyManager::valueChanged, this, &ResolutionSettings::intPropertyValueChanged);
    connect(_enumManager, &QtEnumPropertyManager::valueChanged, this, &ResolutionSettings::enumPropertyValueChanged);
}

VYRResolutionInfo ResolutionSettings::resolution() const
{
    return _resolution;
}

void ResolutionSettings::finishTyping()
{
    const QList<QSpinBox*> spinBoxes = findChildren<QSpinBox*>();
    for (QSpinBox* spinBox : spinBoxes)
        spinBox->interpretText();
}

bool ResolutionSettings::isModified() const
{
    return _modified;
}

void ResolutionSettings::setResolutionFromGui(VYRResolutionInfo pResolution)
{
    _modified = true;
    _resolution = pResolution;
    showSizeAndFrameRate();
}

void ResolutionSettings::intPropertyValueChanged(QtProperty* property, int value)
{
    if (_updating)
        return;
    _modified = true;
    if (property == _frameRate) {
        _resolution.fps = frameRateFor(_resolution);
        return;
    }
    if (!_table.limits(_resolution.binning))
        return;
    if (property == _width && value != _resolution.width)
        editSize(property, value, false);
    else if (property == _height && value != _resolution.height)
        editSize(property, value, true);
}

void ResolutionSettings::enumPropertyValueChanged(QtProperty*, int index)
{
    if (_updating)
        return;
    _modified = true;
    const int binning = binningCodeByName().value(binningNames().value(index));
    if (!_table.largest(binning)) {
        qCDebug(settingsLog) << "No mode of binning" << binning;
        showBinning(_binningIndex);
        return;
    }
    _binningIndex = index;
    _visualization->setSensorBinning(binning);
}

void ResolutionSettings::createProperties()
{
    _resolutionGroup = _groupManager->addProperty(tr("Resolution"));
    _width = _intManager->addProperty(tr("Width"));
    _height = _intManager->addProperty(tr("Height"));
    _binning = _enumManager->addProperty(tr("Binning"));
    _frameRate = _intManager->addProperty();

    _width->setToolTip(tr("How many columns are read; goes to the next width that the camera has"));
    _height->setToolTip(tr("How many rows are read; goes to the next height that the camera has"));
    _binning->setToolTip(tr("How many pixels of the sensor are read as one, across x down"));
    _frameRate->setToolTip(tr("Frames per second"));

    _intManager->setRange(_width, 0, 752);
    _intManager->setRange(_height, 0, 480);
    _intManager->setSingleStep(_width, sizeStep);
    _intManager->setSingleStep(_height, sizeStep);
    _enumManager->setEnumNames(_binning, binningNames());
    _resolutionGroup->addSubProperty(_width);
    _resolutionGroup->addSubProperty(_height);
}

void ResolutionSettings::layOut()
{
    QWidget* properties = createPropertyArea();
    QWidget* frameRate = createFrameRateRow();
    auto* layout = new QGridLayout(this);
    layout->addWidget(properties, 0, 0);
    layout->addWidget(createVisualizationArea(), 1, 0);
    layout->addWidget(frameRate, 2, 0);
    // The picture is there before the others and would come first.
    setTabOrder(properties->findChild<QComboBox*>(), _visualization);
    setTabOrder(_visualization, frameRate->findChild<QSpinBox*>());
}

QWidget* ResolutionSettings::createPropertyArea()
{
    auto* area = new QWidget(this);
    auto* sizeBrowser = new QtGroupBoxPropertyBrowser(area);
    sizeBrowser->setFactoryForManager(_intManager, _spinBoxFactory);
    sizeBrowser->addProperty(_resolutionGroup);
    nameEditors<QSpinBox>(*sizeBrowser, {tr("Width"), tr("Height")});
    auto* binningBrowser = new QtGroupBoxPropertyBrowser(area);
    binningBrowser->setFactoryForManager(_enumManager, _enumFactory);
    binningBrowser->addProperty(_binning);
    nameEditors<QComboBox>(*binningBrowser, {tr("Binning")});

    auto* layout = new QHBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(sizeBrowser, 1);
    layout->addWidget(binningBrowser, 1);
    return area;
}

QWidget* ResolutionSettings::createVisualizationArea()
{
    _visualization->setMinimumSize(320, 240);
    _visualization->setSensorResolution(sensorSize(_table));
    _visualization->setSensorPixelSize(sensorPixelSize);
    _visualization->setSensorGrayscale(true); // both sensors of the camera are monochrome

    auto* area = new QWidget(this);
    auto* layout = new QGridLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_visualization, 0, 0, Qt::AlignCenter);
    return area;
}

QWidget* ResolutionSettings::createFrameRateRow()
{
    auto* row = new QWidget(this);
    auto* numberBrowser = new QtGroupBoxPropertyBrowser(row);
    numberBrowser->setFactoryForManager(_intManager, _spinBoxFactory);
    numberBrowser->addProperty(_frameRate);
    auto* sliderBrowser = new QtGroupBoxPropertyBrowser(row);
    sliderBrowser->setFactoryForManager(_intManager, _sliderFactory);
    sliderBrowser->addProperty(_frameRate);
    sliderBrowser->setStyleSheet(QStringLiteral("padding-top:10px;"));
    auto* label = new QLabel(tr("Framerate"), row);
    nameEditors<QSpinBox>(*numberBrowser, {label->text()});
    nameEditors<QSlider>(*sliderBrowser, {label->text()});
    // In line with the names in the browsers.
    label->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin), 0, 0, 0);

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(label);
    layout->addWidget(numberBrowser, 0, Qt::AlignVCenter);
    layout->addWidget(sliderBrowser, 1, Qt::AlignVCenter);
    return row;
}

void ResolutionSettings::setResolution(const VYRResolutionInfo& resolution)
{
    _resolution = resolution;
    if (!showSizeAndFrameRate())
        return;
    showBinning(binningNames().indexOf(binningName(resolution.binning)));
    _visualization->setCameraResolution(resolution);
}

// Shows width, height and frame rate of the current mode within their ranges; false for an unknown binning.
bool ResolutionSettings::showSizeAndFrameRate()
{
    const auto limits = _table.limits(_resolution.binning);
    if (!limits) {
        qCDebug(settingsLog) << "Binning" << _resolution.binning << "is unknown";
        return false;
    }
    const QScopedValueRollback<bool> updating(_updating, true);
    _intManager->setRange(_width, limits->minWidth, limits->maxWidth);
    _intManager->setValue(_width, _resolution.width);
    _intManager->setRange(_height, limits->minHeight, limits->maxHeight);
    _intManager->setValue(_height, _resolution.height);
    _intManager->setRange(_frameRate, truncated(_resolution.minFps), truncated(_resolution.maxFps));
    _intManager->setValue(_frameRate, truncated(_resolution.fps));
    return true;
}

void ResolutionSettings::showBinning(int index)
{
    const QScopedValueRollback<bool> updating(_updating, true);
    _binningIndex = index;
    _enumManager->setValue(_binning, index);
}

// Moves on from `value` to the next supported width or height, or back when there is none.
void ResolutionSettings::editSize(QtProperty* property, int value, bool byHeight)
{
    auto found = _table.nextInRow(_resolution, value, byHeight);
    if (found) {
        found->fps = frameRateFor(*found);
        _visualization->commitResolution(*found);
    } else {
        qCDebug(settingsLog) << "No mode with" << (byHeight ? "height" : "width") << value << "or beyond";
    }
    _intManager->setValue(property, byHeight ? _resolution.height : _resolution.width);
}

// The frame rate that the user sees, or the nearest that `mode` has: whole numbers miss bounds such as 0.5,
// and another mode may not be as fast. The camera would not start at a rate that its mode does not have.
float ResolutionSettings::frameRateFor(const VYRResolutionInfo& mode) const
{
    const auto shown = static_cast<float>(_intManager->value(_frameRate));
    return std::max(std::min(shown, mode.maxFps), mode.minFps);
}
