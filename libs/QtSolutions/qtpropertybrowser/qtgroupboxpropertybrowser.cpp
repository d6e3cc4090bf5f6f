// SPDX-License-Identifier: Apache-2.0
// The grids of rows in the browser and in its group boxes.
#include "qtgroupboxpropertybrowser.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

namespace {

// A browser may be told to drop a row from inside a signal of the row's own editor.
void dismiss(QWidget* widget)
{
    if (widget) {
        widget->hide();
        widget->deleteLater();
    }
}

} // namespace

QtGroupBoxPropertyBrowser::QtGroupBoxPropertyBrowser(QWidget* parent)
    : QtAbstractPropertyBrowser(parent)
{
    // What is left over stays below the rows.
    auto* layout = new QGridLayout(this);
    layout->setAlignment(Qt::AlignTop);
}

QtGroupBoxPropertyBrowser::~QtGroupBoxPropertyBrowser() = default;

void QtGroupBoxPropertyBrowser::itemInserted(QtBrowserItem* item, QtBrowserItem*)
{
    QtBrowserItem* parent = item->parent();
    if (parent && !_rows.value(parent).box)
        addBox(parent);
    QtProperty* property = item->property();
    QWidget* rowParent = container(parent);
    Row row;
    row.name = new QLabel(rowParent);
    row.editor = createEditor(property, rowParent);
    if (!row.editor && property->hasValue())
        row.valueText = new QLabel(rowParent);
    row.name->setBuddy(row.editor);
    refresh(row, property);
    _rows.insert(item, row);
    arrange(parent);
}

void QtGroupBoxPropertyBrowser::itemRemoved(QtBrowserItem* item)
{
    const Row row = _rows.take(item);
    dismiss(row.name);
    dismiss(row.valueText);
    dismiss(row.editor);
    dismiss(row.box);
    QtBrowserItem* parent = item->parent();
    if (parent && parent->children().isEmpty())
        removeBox(parent);
    else
        arrange(parent);
}

void QtGroupBoxPropertyBrowser::itemChanged(QtBrowserItem* item)
{
    const auto row = _rows.constFind(item);
    if (row == _rows.constEnd())
        return;
    const bool namedBefore = row->name && !row->name->text().isEmpty();
    refresh(*row, item->property());
    if (namedBefore != !item->property()->propertyName().isEmpty())
        arrange(item->parent());
}

// Lays out the rows under `parent` (null: the top level) anew, below the parent's own value if it has one.
void QtGroupBoxPropertyBrowser::arrange(QtBrowserItem* parent)
{
    QWidget* area = container(parent);
    if (!area)
        return; // somebody else has deleted the box
    auto* layout = qobject_cast<QGridLayout*>(area->layout());
    while (QLayoutItem* placed = layout->takeAt(0))
        delete placed;
    int line = 0;
    if (parent) {
        const Row own = _rows.value(parent);
        if (QWidget* value = own.editor ? own.editor.data() : own.valueText.data())
            layout->addWidget(value, line++, 0, 1, 2);
    }
    const QList<QtBrowserItem*> items = parent ? parent->children() : topLevelItems();
    for (const QtBrowserItem* item : items) {
        const auto row = _rows.constFind(item);
        if (row != _rows.constEnd())
            placeRow(layout, line++, *row);
    }
}

void QtGroupBoxPropertyBrowser::placeRow(QGridLayout* layout, int line, const Row& row) const
{
    if (row.box) {
        layout->addWidget(row.box, line, 0, 1, 2);
        return;
    }
    QWidget* value = row.editor ? row.editor.data() : row.valueText.data();
    const bool named = row.name && !row.name->text().isEmpty();
    if (row.name)
        row.name->setVisible(named);
    if (named)
        layout->addWidget(row.name, line, 0, 1, value ? 1 : 2);
    if (value)
        layout->addWidget(value, line, named ? 1 : 0, 1, named ? 1 : 2);
}

// The first sub-property turns the row of `item` into a group box, with the row's value inside.
void QtGroupBoxPropertyBrowser::addBox(QtBrowserItem* item)
{
    Row& row = _rows[item];
    row.box = new QGroupBox(container(item->parent()));
    new QGridLayout(row.box);
    if (row.name)
        row.name->hide();
    refresh(row, item->property());
    arrange(item->parent());
}

// With its last sub-property gone, `item` is a row again.
void QtGroupBoxPropertyBrowser::removeBox(QtBrowserItem* item)
{
    const auto found = _rows.find(item);
    if (found == _rows.end())
        return;
    QWidget* rowParent = container(item->parent());
    QGroupBox* box = found->box;
    found->box = nullptr;
    for (QWidget* widget : {found->editor.data(), static_cast<QWidget*>(found->valueText.data())})
        if (widget)
            widget->setParent(rowParent);
    dismiss(box);
    arrange(item->parent());
}

void QtGroupBoxPropertyBrowser::refresh(const Row& row, const QtProperty* property) const
{
    if (row.box)
        row.box->setTitle(property->propertyName());
    if (row.name) {
        QFont font = row.name->font();
        font.setUnderline(property->isModified());
        row.name->setFont(font);
        row.name->setText(property->propertyName());
        row.name->setEnabled(property->isEnabled());
    }
    if (row.valueText) {
        row.valueText->setText(property->valueText());
        row.valueText->setEnabled(property->isEnabled());
    }
    if (row.editor)
        row.editor->setEnabled(property->isEnabled());
    for (QWidget* widget : {static_cast<QWidget*>(row.box.data()), static_cast<QWidget*>(row.name.data()),
                            static_cast<QWidget*>(row.valueText.data()), row.editor.data()}) {
        if (widget) {
            widget->setToolTip(property->toolTip());
            widget->setStatusTip(property->statusTip());
            widget->setWhatsThis(property->whatsThis());
        }
    }
}

QWidget* QtGroupBoxPropertyBrowser::container(QtBrowserItem* parent)
{
    return parent ? static_cast<QWidget*>(_rows.value(parent).box.data()) : this;
}
