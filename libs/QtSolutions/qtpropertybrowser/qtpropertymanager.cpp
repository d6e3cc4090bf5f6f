// SPDX-License-Identifier: Apache-2.0
// Values, ranges and names of the properties, and who hears of their changes.
#include "qtpropertymanager.h"

#include <algorithm>

QtIntPropertyManager::QtIntPropertyManager(QObject* parent)
    : QtAbstractPropertyManager(parent)
{
}

QtIntPropertyManager::~QtIntPropertyManager()
{
    clear();
}

int QtIntPropertyManager::value(const QtProperty* property) const
{
    const auto number = _numbers.constFind(property);
    return number == _numbers.constEnd() ? 0 : number->value;
}

int QtIntPropertyManager::minimum(const QtProperty* property) const
{
    const auto number = _numbers.constFind(property);
    return number == _numbers.constEnd() ? 0 : number->minimum;
}

int QtIntPropertyManager::maximum(const QtProperty* property) const
{
    const auto number = _numbers.constFind(property);
    return number == _numbers.constEnd() ? 0 : number->maximum;
}

int QtIntPropertyManager::singleStep(const QtProperty* property) const
{
    const auto number = _numbers.constFind(property);
    return number == _numbers.constEnd() ? 0 : number->singleStep;
}

bool QtIntPropertyManager::isReadOnly(const QtProperty* property) const
{
    const auto number = _numbers.constFind(property);
    return number != _numbers.constEnd() && number->readOnly;
}

void QtIntPropertyManager::setValue(QtProperty* property, int value)
{
    const auto number = _numbers.find(property);
    if (number == _numbers.end())
        return;
    const int bounded = std::clamp(value, number->minimum, number->maximum);
    if (bounded == number->value)
        return;
    number->value = bounded;
    Q_EMIT propertyChanged(property);
    Q_EMIT valueChanged(property, bounded);
}

void QtIntPropertyManager::setMinimum(QtProperty* property, int minimum)
{
    setRange(property, minimum, std::max(minimum, maximum(property)));
}

void QtIntPropertyManager::setMaximum(QtProperty* property, int maximum)
{
    setRange(property, std::min(minimum(property), maximum), maximum);
}

void QtIntPropertyManager::setRange(QtProperty* property, int minimum, int maximum)
{
    const auto number = _numbers.find(property);
    if (number == _numbers.end())
        return;
    const auto [low, high] = std::minmax(minimum, maximum);
    if (low == number->minimum && high == number->maximum)
        return;
    const int valueBefore = number->value;
    const int valueAfter = std::clamp(valueBefore, low, high);
    number->minimum = low;
    number->maximum = high;
    number->value = valueAfter;
    Q_EMIT rangeChanged(property, low, high);
    if (valueAfter != valueBefore) {
        Q_EMIT propertyChanged(property);
        Q_EMIT valueChanged(property, valueAfter);
    }
}

void QtIntPropertyManager::setSingleStep(QtProperty* property, int step)
{
    const auto number = _numbers.find(property);
    const int bounded = std::max(step, 0);
    if (number == _numbers.end() || bounded == number->singleStep)
        return;
    number->singleStep = bounded;
    Q_EMIT singleStepChanged(property, bounded);
}

void QtIntPropertyManager::setReadOnly(QtProperty* property, bool readOnly)
{
    const auto number = _numbers.find(property);
    if (number == _numbers.end() || readOnly == number->readOnly)
        return;
    number->readOnly = readOnly;
    Q_EMIT propertyChanged(property);
    Q_EMIT readOnlyChanged(property, readOnly);
}

QString QtIntPropertyManager::valueText(const QtProperty* property) const
{
    return _numbers.contains(property) ? QString::number(value(property)) : QString();
}

void QtIntPropertyManager::initializeProperty(QtProperty* property)
{
    _numbers.insert(property, Number());
}

void QtIntPropertyManager::uninitializeProperty(QtProperty* property)
{
    _numbers.remove(property);
}

QtEnumPropertyManager::QtEnumPropertyManager(QObject* parent)
    : QtAbstractPropertyManager(parent)
{
}

QtEnumPropertyManager::~QtEnumPropertyManager()
{
    clear();
}

int QtEnumPropertyManager::value(const QtProperty* property) const
{
    const auto choice = _choices.constFind(property);
    return choice == _choices.constEnd() ? -1 : choice->value;
}

QStringList QtEnumPropertyManager::enumNames(const QtProperty* property) const
{
    return _choices.value(property).names;
}

QMap<int, QIcon> QtEnumPropertyManager::enumIcons(const QtProperty* property) const
{
    return _choices.value(property).icons;
}

void QtEnumPropertyManager::setValue(QtProperty* property, int value)
{
    const auto choice = _choices.find(property);
    if (choice == _choices.end() || value < 0 || value >= choice->names.size() || value == choice->value)
        return;
    choice->value = value;
    Q_EMIT propertyChanged(property);
    Q_EMIT valueChanged(property, value);
}

void QtEnumPropertyManager::setEnumNames(QtProperty* property, const QStringList& names)
{
    const auto choice = _choices.find(property);
    if (choice == _choices.end() || names == choice->names)
        return;
    const int first = names.isEmpty() ? -1 : 0;
    choice->names = names;
    choice->value = first;
    Q_EMIT enumNamesChanged(property, names);
    Q_EMIT propertyChanged(property);
    Q_EMIT valueChanged(property, first);
}

void QtEnumPropertyManager::setEnumIcons(QtProperty* property, const QMap<int, QIcon>& icons)
{
    const auto choice = _choices.find(property);
    if (choice == _choices.end())
        return;
    choice->icons = icons;
    Q_EMIT enumIconsChanged(property, icons);
    Q_EMIT propertyChanged(property);
}

QString QtEnumPropertyManager::valueText(const QtProperty* property) const
{
    const Choice choice = _choices.value(property);
    return choice.names.value(choice.value);
}

QIcon QtEnumPropertyManager::valueIcon(const QtProperty* property) const
{
    const Choice choice = _choices.value(property);
    return choice.icons.value(choice.value);
}

void QtEnumPropertyManager::initializeProperty(QtProperty* property)
{
    _choices.insert(property, Choice());
}

void QtEnumPropertyManager::uninitializeProperty(QtProperty* property)
{
    _choices.remove(property);
}

QtGroupPropertyManager::QtGroupPropertyManager(QObject* parent)
    : QtAbstractPropertyManager(parent)
{
}

QtGroupPropertyManager::~QtGroupPropertyManager()
{
    clear();
}

bool QtGroupPropertyManager::hasValue(const QtProperty*) const
{
    return false;
}

void QtGroupPropertyManager::initializeProperty(QtProperty*)
{
}
