// SPDX-License-Identifier: Apache-2.0
// A property browser made of group boxes.
#pragma once

#include "qtpropertybrowser.h"

class QGridLayout;
class QGroupBox;
class QLabel;

/// Shows each property as a row of its name and its editor, and each property that has sub-properties as a
/// group box around their rows.
///
/// A property with a value but without a factory shows its value as text.
///
/// Thread: GUI thread.
class QtGroupBoxPropertyBrowser : public QtAbstractPropertyBrowser
{
    Q_OBJECT

public:
    explicit QtGroupBoxPropertyBrowser(QWidget* parent = nullptr);
    ~QtGroupBoxPropertyBrowser() override;

protected:
    void itemInserted(QtBrowserItem* item, QtBrowserItem* afterItem) override;
    void itemRemoved(QtBrowserItem* item) override;
    void itemChanged(QtBrowserItem* item) override;

private:
    // The widgets of one item. Every one may be deleted by others, editors for instance with their factory.
    struct Row
    {
        QPointer<QLabel> name;
        QPointer<QLabel> valueText;
        QPointer<QWidget> editor;
        QPointer<QGroupBox> box;
    };

    void arrange(QtBrowserItem* parent);
    void addBox(QtBrowserItem* item);
    void removeBox(QtBrowserItem* item);
    void placeRow(QGridLayout* layout, int line, const Row& row) const;
    void refresh(const Row& row, const QtProperty* property) const;
    QWidget* container(QtBrowserItem* parent);

    QHash<const QtBrowserItem*, Row> _rows;
};
