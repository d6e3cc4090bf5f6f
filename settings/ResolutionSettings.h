// SPDX-License-Identifier: Apache-2.0
// The editor of the capture mode.

#pragma once

#include "ResolutionMetaType.h"

#include <QWidget>

class QtEnumEditorFactory;
class QtEnumPropertyManager;
class QtGroupPropertyManager;
class QtIntPropertyManager;
class QtProperty;
class QtSliderFactory;
class QtSpinBoxFactory;
class ResolutionTable;
class ResolutionVisualization;

/// Edits a capture mode: width, height, binning and frame rate. Every edit ends at a mode of the table; one
/// that has no supported target restores the value before it.
///
/// The editor never talks to the camera. When the user is done, whoever shows it calls finishTyping() and
/// then reads isModified() and resolution().
///
/// A mode with an unknown binning code can be shown but not edited, until the user chooses a binning.
///
/// Ownership: borrows the table; everything else that it uses is its own child.
/// Thread: GUI thread.
class ResolutionSettings : public QWidget
{
    Q_OBJECT

public:
    /// Shows `resolution`, not modified. `table` must outlive the editor.
    ResolutionSettings(const VYRResolutionInfo& resolution, const ResolutionTable& table, QWidget* parent = nullptr);

    /// The current mode.
    VYRResolutionInfo resolution() const;

    /// Takes a number that has been typed but not finished with Enter or Tab.
    void finishTyping();

    /// Whether the user has changed anything, even if it was changed back; never becomes false again.
    bool isModified() const;

public slots:
    /// Takes over a mode that the picture of the sensor has committed. The same mode may come again.
    void setResolutionFromGui(VYRResolutionInfo pResolution);

    /// The value of a width, height or frame-rate property has changed, by the user unless the editor is
    /// updating it.
    void intPropertyValueChanged(QtProperty* property, int value);

    /// The user has chosen the binning at position `index` of the list of names.
    void enumPropertyValueChanged(QtProperty* property, int index);

private:
    void createProperties();
    void layOut();
    QWidget* createPropertyArea();
    QWidget* createVisualizationArea();
    QWidget* createFrameRateRow();
    void setResolution(const VYRResolutionInfo& resolution);
    bool showSizeAndFrameRate();
    void showBinning(int index);
    void editSize(QtProperty* property, int value, bool byHeight);
    float frameRateFor(const VYRResolutionInfo& mode) const;

    const ResolutionTable& _table;
    bool _modified = false;
    bool _updating = false; // while the editor sets property values itself
    VYRResolutionInfo _resolution;
    int _binningIndex = 0; // of the name that is shown

    QtIntPropertyManager* const _intManager;
    QtEnumPropertyManager* const _enumManager;
    QtGroupPropertyManager* const _groupManager;
    QtSpinBoxFactory* const _spinBoxFactory;
    QtSliderFactory* const _sliderFactory;
    QtEnumEditorFactory* const _enumFactory;

    QtProperty* _resolutionGroup = nullptr;
    QtProperty* _width = nullptr;
    QtProperty* _height = nullptr;
    QtProperty* _binning = nullptr;
    QtProperty* _frameRate = nullptr;

    ResolutionVisualization* const _visualization;
};
