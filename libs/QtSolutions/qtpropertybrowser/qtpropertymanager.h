// SPDX-License-Identifier: Apache-2.0
// The managers of integer, enumeration and group properties.
#pragma once

#include "qtpropertybrowser.h"

#include <QHash>
#include <QIcon>
#include <QMap>
#include <QStringList>

#include <climits>

/// Keeps whole numbers within a range of their own each.
///
/// A new property has the value 0, no limits but those of int, a single step of 1 and may be edited. Asked
/// about a property of another manager, every operation returns 0 or false, and setting does nothing. Signals
/// come after the value or the range has changed, and never when it stays the same.
///
/// Thread: GUI thread.
class QtIntPropertyManager : public QtAbstractPropertyManager
{
    Q_OBJECT

public:
    explicit QtIntPropertyManager(QObject* parent = nullptr);
    ~QtIntPropertyManager() override;

    int value(const QtProperty* property) const;
    int minimum(const QtProperty* property) const;
    int maximum(const QtProperty* property) const;
    /// By how much one click of a spin box or one arrow key on a slider changes the value.
    int singleStep(const QtProperty* property) const;
    /// Whether editors refuse edits. setValue() still changes the value.
    bool isReadOnly(const QtProperty* property) const;

public Q_SLOTS:
    /// Sets the value, or the end of the range that is nearest to it.
    void setValue(QtProperty* property, int value);
    /// Sets the lower end; an upper end or value below it rises to it.
    void setMinimum(QtProperty* property, int minimum);
    /// Sets the upper end; a lower end or value above it falls to it.
    void setMaximum(QtProperty* property, int maximum);
    /// Sets both ends, in either order; a value outside moves to the nearest end.
    void setRange(QtProperty* property, int minimum, int maximum);
    /// Sets the single step; a negative one counts as 0.
    void setSingleStep(QtProperty* property, int step);
    void setReadOnly(QtProperty* property, bool readOnly);

Q_SIGNALS:
    void valueChanged(QtProperty* property, int value);
    /// Sent before valueChanged() when the new range has moved the value.
    void rangeChanged(QtProperty* property, int minimum, int maximum);
    void singleStepChanged(QtProperty* property, int step);
    void readOnlyChanged(QtProperty* property, bool readOnly);

protected:
    QString valueText(const QtProperty* property) const override;
    void initializeProperty(QtProperty* property) override;
    void uninitializeProperty(QtProperty* property) override;

private:
    struct Number
    {
        int value = 0;
        int minimum = -INT_MAX;
        int maximum = INT_MAX;
        int singleStep = 1;
        bool readOnly = false;
    };

    QHash<const QtProperty*, Number> _numbers;
};

/// Keeps a choice from a list of names, with a picture for each where given.
///
/// A new property has no names and the value -1. Asked about a property of another manager, value() returns
/// -1 and the other operations return something empty; setting does nothing.
///
/// Thread: GUI thread.
class QtEnumPropertyManager : public QtAbstractPropertyManager
{
    Q_OBJECT

public:
    explicit QtEnumPropertyManager(QObject* parent = nullptr);
    ~QtEnumPropertyManager() override;

    /// The position of the chosen name in enumNames(), or -1 when there are no names.
    int value(const QtProperty* property) const;
    QStringList enumNames(const QtProperty* property) const;
    /// The pictures by position of their name.
    QMap<int, QIcon> enumIcons(const QtProperty* property) const;

public Q_SLOTS:
    /// Chooses the name at position `value`. Nothing happens when there is none.
    void setValue(QtProperty* property, int value);
    /// Replaces the names and chooses the first of them.
    void setEnumNames(QtProperty* property, const QStringList& names);
    void setEnumIcons(QtProperty* property, const QMap<int, QIcon>& icons);

Q_SIGNALS:
    /// Sent also after enumNamesChanged(), because the value then stands for another name.
    void valueChanged(QtProperty* property, int value);
    void enumNamesChanged(QtProperty* property, const QStringList& names);
    void enumIconsChanged(QtProperty* property, const QMap<int, QIcon>& icons);

protected:
    QString valueText(const QtProperty* property) const override;
    QIcon valueIcon(const QtProperty* property) const override;
    void initializeProperty(QtProperty* property) override;
    void uninitializeProperty(QtProperty* property) override;

private:
    struct Choice
    {
        int value = -1;
        QStringList names;
        QMap<int, QIcon> icons;
    };

    QHash<const QtProperty*, Choice> _choices;
};

/// Makes properties without a value, which only hold sub-properties together.
///
/// Thread: GUI thread.
class QtGroupPropertyManager : public QtAbstractPropertyManager
{
    Q_OBJECT

public:
    explicit QtGroupPropertyManager(QObject* parent = nullptr);
    ~QtGroupPropertyManager() override;

protected:
    bool hasValue(const QtProperty* property) const override;
    void initializeProperty(QtProperty* property) override;
};
