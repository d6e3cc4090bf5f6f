// SPDX-License-Identifier: Apache-2.0
// The graph of properties, and the items with which a browser follows it.
#include "qtpropertybrowser.h"

QtProperty::QtProperty(QtAbstractPropertyManager* manager)
    : _manager(manager)
{
}

QtProperty::~QtProperty()
{
    // Whoever shows or edits this property hears of its end while name, value and sub-properties are still
    // there.
    while (!_parents.isEmpty())
        _parents.first()->removeSubProperty(this);
    _manager->forget(this);
    for (QtProperty* property : qAsConst(_subProperties))
        property->_parents.removeOne(this);
}

QList<QtProperty*> QtProperty::subProperties() const
{
    return _subProperties;
}

QtAbstractPropertyManager* QtProperty::propertyManager() const
{
    return _manager;
}

QString QtProperty::toolTip() const
{
    return _toolTip;
}

QString QtProperty::statusTip() const
{
    return _statusTip;
}

QString QtProperty::whatsThis() const
{
    return _whatsThis;
}

QString QtProperty::propertyName() const
{
    return _name;
}

bool QtProperty::isEnabled() const
{
    return _enabled;
}

bool QtProperty::isModified() const
{
    return _modified;
}

bool QtProperty::hasValue() const
{
    return _manager->hasValue(this);
}

QIcon QtProperty::valueIcon() const
{
    return _manager->valueIcon(this);
}

QString QtProperty::valueText() const
{
    return _manager->valueText(this);
}

void QtProperty::setToolTip(const QString& text)
{
    if (_toolTip != text) {
        _toolTip = text;
        propertyChanged();
    }
}

void QtProperty::setStatusTip(const QString& text)
{
    if (_statusTip != text) {
        _statusTip = text;
        propertyChanged();
    }
}

void QtProperty::setWhatsThis(const QString& text)
{
    if (_whatsThis != text) {
        _whatsThis = text;
        propertyChanged();
    }
}

void QtProperty::setPropertyName(const QString& text)
{
    if (_name != text) {
        _name = text;
        propertyChanged();
    }
}

void QtProperty::setEnabled(bool enable)
{
    if (_enabled != enable) {
        _enabled = enable;
        propertyChanged();
    }
}

void QtProperty::setModified(bool modified)
{
    if (_modified != modified) {
        _modified = modified;
        propertyChanged();
    }
}

void QtProperty::addSubProperty(QtProperty* property)
{
    insertSubProperty(property, _subProperties.isEmpty() ? nullptr : _subProperties.last());
}

void QtProperty::insertSubProperty(QtProperty* property, QtProperty* afterProperty)
{
    if (!property || _subProperties.contains(property) || property->isAbove(this))
        return;
    const int place = _subProperties.indexOf(afterProperty) + 1;
    _subProperties.insert(place, property);
    property->_parents.append(this);
    Q_EMIT _manager->propertyInserted(property, this, place > 0 ? afterProperty : nullptr);
}

void QtProperty::removeSubProperty(QtProperty* property)
{
    if (!_subProperties.removeOne(property))
        return;
    property->_parents.removeOne(this);
    Q_EMIT _manager->propertyRemoved(property, this);
}

void QtProperty::propertyChanged()
{
    Q_EMIT _manager->propertyChanged(this);
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as the tree of properties
bool QtProperty::isAbove(const QtProperty* property) const
{
    if (property == this)
        return true;
    for (const QtProperty* parent : property->_parents)
        if (isAbove(parent))
            return true;
    return false;
}

QtAbstractPropertyManager::QtAbstractPropertyManager(QObject* parent)
    : QObject(parent)
{
}

QtAbstractPropertyManager::~QtAbstractPropertyManager()
{
    clear();
}

QSet<QtProperty*> QtAbstractPropertyManager::properties() const
{
    return _properties;
}

void QtAbstractPropertyManager::clear() const
{
    while (!_properties.isEmpty())
        delete *_properties.constBegin();
}

QtProperty* QtAbstractPropertyManager::addProperty(const QString& name)
{
    QtProperty* property = createProperty();
    if (property) {
        property->_name = name;
        _properties.insert(property);
        initializeProperty(property);
    }
    return property;
}

bool QtAbstractPropertyManager::hasValue(const QtProperty*) const
{
    return true;
}

QIcon QtAbstractPropertyManager::valueIcon(const QtProperty*) const
{
    return QIcon();
}

QString QtAbstractPropertyManager::valueText(const QtProperty*) const
{
    return QString();
}

void QtAbstractPropertyManager::uninitializeProperty(QtProperty*)
{
}

QtProperty* QtAbstractPropertyManager::createProperty()
{
    return new QtProperty(this);
}

void QtAbstractPropertyManager::forget(QtProperty* property)
{
    if (_properties.contains(property)) {
        Q_EMIT propertyDestroyed(property);
        uninitializeProperty(property);
        _properties.remove(property);
    }
}

QtAbstractEditorFactoryBase::QtAbstractEditorFactoryBase(QObject* parent)
    : QObject(parent)
{
}

QtBrowserItem::QtBrowserItem(QtAbstractPropertyBrowser* browser, QtProperty* property, QtBrowserItem* parent)
    : _browser(browser)
    , _property(property)
    , _parent(parent)
{
}

QtBrowserItem::~QtBrowserItem()
{
    for (QtBrowserItem* child : qAsConst(_children))
        delete child;
}

QtProperty* QtBrowserItem::property() const
{
    return _property;
}

QtBrowserItem* QtBrowserItem::parent() const
{
    return _parent;
}

QList<QtBrowserItem*> QtBrowserItem::children() const
{
    return _children;
}

QtAbstractPropertyBrowser* QtBrowserItem::browser() const
{
    return _browser;
}

QtAbstractPropertyBrowser::QtAbstractPropertyBrowser(QWidget* parent)
    : QWidget(parent)
{
}

QtAbstractPropertyBrowser::~QtAbstractPropertyBrowser()
{
    // The subclass is gone, so its operations are not called for each item any more.
    for (QtAbstractPropertyManager* manager : qAsConst(_watched))
        manager->disconnect(this);
    for (QtBrowserItem* item : qAsConst(_topLevelItems))
        delete item;
    const auto managers = _factories.keys();
    for (QtAbstractPropertyManager* manager : managers)
        unsetFactoryForManager(manager);
}

QList<QtProperty*> QtAbstractPropertyBrowser::properties() const
{
    QList<QtProperty*> list;
    for (const QtBrowserItem* item : _topLevelItems)
        list.append(item->property());
    return list;
}

QList<QtBrowserItem*> QtAbstractPropertyBrowser::items(QtProperty* property) const
{
    return _itemsByProperty.values(property);
}

QtBrowserItem* QtAbstractPropertyBrowser::topLevelItem(QtProperty* property) const
{
    return itemOf(property, nullptr);
}

QList<QtBrowserItem*> QtAbstractPropertyBrowser::topLevelItems() const
{
    return _topLevelItems;
}

void QtAbstractPropertyBrowser::clear()
{
    while (!_topLevelItems.isEmpty())
        removeItem(_topLevelItems.last());
}

void QtAbstractPropertyBrowser::unsetFactoryForManager(QtAbstractPropertyManager* manager)
{
    const QPointer<QtAbstractEditorFactoryBase> factory = _factories.take(manager);
    if (factory && --factory->_browsersByManager[manager] == 0) {
        factory->_browsersByManager.remove(manager);
        factory->breakConnection(manager);
    }
}

QtBrowserItem* QtAbstractPropertyBrowser::currentItem() const
{
    return _currentItem;
}

void QtAbstractPropertyBrowser::setCurrentItem(QtBrowserItem* item)
{
    if (_currentItem != item) {
        _currentItem = item;
        Q_EMIT currentItemChanged(item);
    }
}

QtBrowserItem* QtAbstractPropertyBrowser::addProperty(QtProperty* property)
{
    return insertProperty(property, _topLevelItems.isEmpty() ? nullptr : _topLevelItems.last()->property());
}

QtBrowserItem* QtAbstractPropertyBrowser::insertProperty(QtProperty* property, QtProperty* afterProperty)
{
    if (!property || topLevelItem(property))
        return nullptr;
    return createItem(property, nullptr, topLevelItem(afterProperty));
}

void QtAbstractPropertyBrowser::removeProperty(QtProperty* property)
{
    if (QtBrowserItem* item = topLevelItem(property))
        removeItem(item);
}

QWidget* QtAbstractPropertyBrowser::createEditor(QtProperty* property, QWidget* parent)
{
    const QPointer<QtAbstractEditorFactoryBase> factory = _factories.value(property->propertyManager());
    return factory ? factory->createEditor(property, parent) : nullptr;
}

void QtAbstractPropertyBrowser::useFactory(QtAbstractPropertyManager* manager, QtAbstractEditorFactoryBase* factory)
{
    if (!manager || _factories.value(manager) == factory)
        return;
    unsetFactoryForManager(manager);
    _factories.insert(manager, factory);
    ++factory->_browsersByManager[manager];
    watch(manager);
}

void QtAbstractPropertyBrowser::watch(QtAbstractPropertyManager* manager)
{
    if (_watched.contains(manager))
        return;
    _watched.insert(manager);
    connect(manager, &QtAbstractPropertyManager::propertyInserted, this,
            &QtAbstractPropertyBrowser::onPropertyInserted);
    connect(manager, &QtAbstractPropertyManager::propertyRemoved, this, &QtAbstractPropertyBrowser::onPropertyRemoved);
    connect(manager, &QtAbstractPropertyManager::propertyChanged, this, &QtAbstractPropertyBrowser::onPropertyChanged);
    connect(manager, &QtAbstractPropertyManager::propertyDestroyed, this, &QtAbstractPropertyBrowser::removeProperty);
    connect(manager, &QObject::destroyed, this, [this, manager] { forget(manager); });
}

void QtAbstractPropertyBrowser::forget(QtAbstractPropertyManager* manager)
{
    _watched.remove(manager);
    const QPointer<QtAbstractEditorFactoryBase> factory = _factories.take(manager);
    if (factory)
        factory->_browsersByManager.remove(manager);
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as the tree of properties
QtBrowserItem* QtAbstractPropertyBrowser::createItem(QtProperty* property, QtBrowserItem* parent, QtBrowserItem* after)
{
    watch(property->propertyManager());
    auto* item = new QtBrowserItem(this, property, parent);
    QList<QtBrowserItem*>& list = siblings(parent);
    list.insert(list.indexOf(after) + 1, item);
    _itemsByProperty.insert(property, item);
    itemInserted(item, after);
    QtBrowserItem* afterChild = nullptr;
    const QList<QtProperty*> subProperties = property->subProperties();
    for (QtProperty* subProperty : subProperties)
        afterChild = createItem(subProperty, item, afterChild);
    return item;
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as the tree of properties
void QtAbstractPropertyBrowser::removeItem(QtBrowserItem* item)
{
    while (!item->_children.isEmpty())
        removeItem(item->_children.last());
    siblings(item->parent()).removeOne(item);
    _itemsByProperty.remove(item->property(), item);
    if (_currentItem == item)
        setCurrentItem(nullptr);
    itemRemoved(item);
    delete item;
}

QList<QtBrowserItem*>& QtAbstractPropertyBrowser::siblings(QtBrowserItem* parent)
{
    return parent ? parent->_children : _topLevelItems;
}

QtBrowserItem* QtAbstractPropertyBrowser::itemOf(QtProperty* property, QtBrowserItem* parent) const
{
    const QList<QtBrowserItem*> candidates = _itemsByProperty.values(property);
    for (QtBrowserItem* item : candidates)
        if (item->parent() == parent)
            return item;
    return nullptr;
}

void QtAbstractPropertyBrowser::onPropertyInserted(QtProperty* property, QtProperty* parent, QtProperty* after)
{
    const QList<QtBrowserItem*> parentItems = items(parent);
    for (QtBrowserItem* parentItem : parentItems)
        createItem(property, parentItem, itemOf(after, parentItem));
}

void QtAbstractPropertyBrowser::onPropertyRemoved(QtProperty* property, QtProperty* parent)
{
    const QList<QtBrowserItem*> parentItems = items(parent);
    for (QtBrowserItem* parentItem : parentItems)
        if (QtBrowserItem* item = itemOf(property, parentItem))
            removeItem(item);
}

void QtAbstractPropertyBrowser::onPropertyChanged(QtProperty* property)
{
    const QList<QtBrowserItem*> shown = items(property);
    for (QtBrowserItem* item : shown)
        itemChanged(item);
}
