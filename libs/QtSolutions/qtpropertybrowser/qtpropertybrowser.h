// SPDX-License-Identifier: Apache-2.0
// Properties, the managers of their values, the factories of their editors, the browsers that show them.
#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QWidget>

class QtAbstractPropertyBrowser;
class QtAbstractPropertyManager;

/// One named entry of a property browser.
///
/// A property has no value of its own: its manager keeps the value, so that the type of the manager decides
/// the type of the property. Properties form an acyclic graph: one may be the sub-property of several others.
///
/// Made by QtAbstractPropertyManager::addProperty() and owned by that manager. It may be deleted at any time:
/// its parents, the browsers that show it and the editors tied to it let go of it first.
/// Its sub-properties are lent, not owned.
///
/// Thread: GUI thread.
class QtProperty
{
public:
    virtual ~QtProperty();

    /// The sub-properties in the order in which they are shown.
    QList<QtProperty*> subProperties() const;
    /// The manager that made this property and keeps its value; never null.
    QtAbstractPropertyManager* propertyManager() const;

    QString toolTip() const;
    QString statusTip() const;
    QString whatsThis() const;
    /// The name shown beside the value. May be empty, and need not be unique.
    QString propertyName() const;
    /// Whether the user may edit the value; true at first.
    bool isEnabled() const;
    /// Whether browsers mark the property as changed; false at first.
    bool isModified() const;

    /// Whether the property has a value at all (a group has none).
    bool hasValue() const;
    /// A picture of the value; null when the manager has none.
    QIcon valueIcon() const;
    /// The value as text; empty when there is no value.
    QString valueText() const;

    void setToolTip(const QString& text);
    void setStatusTip(const QString& text);
    void setWhatsThis(const QString& text);
    void setPropertyName(const QString& text);
    void setEnabled(bool enable);
    void setModified(bool modified);

    /// Appends `property` to the sub-properties.
    void addSubProperty(QtProperty* property);
    /// Inserts `property` behind `afterProperty`, or first when that is null or no sub-property of this one.
    /// Nothing happens when `property` is null, is a sub-property already, or holds this one anywhere below
    /// it.
    void insertSubProperty(QtProperty* property, QtProperty* afterProperty);
    /// Lets go of `property`, which itself stays alive. Nothing happens when it is no sub-property.
    void removeSubProperty(QtProperty* property);

protected:
    explicit QtProperty(QtAbstractPropertyManager* manager);

    /// Tells the browsers that something shown of this property has changed.
    void propertyChanged();

private:
    Q_DISABLE_COPY(QtProperty)
    friend class QtAbstractPropertyManager;

    bool isAbove(const QtProperty* property) const;

    QtAbstractPropertyManager* const _manager;
    QList<QtProperty*> _parents;
    QList<QtProperty*> _subProperties;
    QString _toolTip;
    QString _statusTip;
    QString _whatsThis;
    QString _name;
    bool _enabled = true;
    bool _modified = false;
};

/// Makes and owns the properties of one type, and keeps their values.
///
/// A manager for a new type keeps a value for each property: initializeProperty() makes room for it and
/// uninitializeProperty() gives it up. Its destructor must call clear(), while its own values still exist.
///
/// Thread: GUI thread.
class QtAbstractPropertyManager : public QObject
{
    Q_OBJECT

public:
    explicit QtAbstractPropertyManager(QObject* parent = nullptr);
    /// Deletes all properties of this manager.
    ~QtAbstractPropertyManager() override;

    /// The properties of this manager, in no order.
    QSet<QtProperty*> properties() const;
    /// Deletes all properties of this manager.
    void clear() const;
    /// Makes a property named `name`, with the value that this type starts with. The manager owns it.
    QtProperty* addProperty(const QString& name = QString());

Q_SIGNALS:
    /// `property` became a sub-property of `parent`, a property of this manager, behind `after` (null:
    /// first).
    void propertyInserted(QtProperty* property, QtProperty* parent, QtProperty* after);
    /// Something that is shown of `property` has changed: its value, its name, whether it is enabled and so
    /// on.
    void propertyChanged(QtProperty* property);
    /// `property` is no longer a sub-property of `parent`, a property of this manager.
    void propertyRemoved(QtProperty* property, QtProperty* parent);
    /// `property`, of this manager, is about to be deleted; it still has its name, value and sub-properties.
    void propertyDestroyed(QtProperty* property);

protected:
    virtual bool hasValue(const QtProperty* property) const;
    virtual QIcon valueIcon(const QtProperty* property) const;
    virtual QString valueText(const QtProperty* property) const;
    virtual void initializeProperty(QtProperty* property) = 0;
    virtual void uninitializeProperty(QtProperty* property);
    virtual QtProperty* createProperty();

private:
    friend class QtProperty;

    void forget(QtProperty* property);

    QSet<QtProperty*> _properties;
};

/// What a browser needs of a factory of editors, whatever the type of its managers.
///
/// Thread: GUI thread.
class QtAbstractEditorFactoryBase : public QObject
{
    Q_OBJECT

public:
    /// Makes an editor for `property` as a child of `parent`, or returns null when the property's manager was
    /// not added to this factory. The caller (usually a browser) owns the editor through `parent`.
    virtual QWidget* createEditor(QtProperty* property, QWidget* parent) = 0;

protected:
    explicit QtAbstractEditorFactoryBase(QObject* parent = nullptr);

    /// Ends the service to `manager`: the last browser that used this factory for it is gone.
    virtual void breakConnection(QtAbstractPropertyManager* manager) = 0;

protected Q_SLOTS:
    /// Forgets `manager`, which is just being destroyed.
    virtual void managerDestroyed(QObject* manager) = 0;

private:
    friend class QtAbstractPropertyBrowser;

    QHash<QtAbstractPropertyManager*, int> _browsersByManager;
};

/// Makes editors for the properties of managers of type `PropertyManager`, and keeps them in step with the
/// managers.
///
/// A factory for a new type overrides the three protected operations. One factory may serve many managers,
/// and one manager may be served by several factories, each in a browser of its own.
///
/// Thread: GUI thread.
template<class PropertyManager>
class QtAbstractEditorFactory : public QtAbstractEditorFactoryBase
{
public:
    explicit QtAbstractEditorFactory(QObject* parent)
        : QtAbstractEditorFactoryBase(parent)
    {
    }

    QWidget* createEditor(QtProperty* property, QWidget* parent) override
    {
        PropertyManager* manager = propertyManager(property);
        return manager ? createEditor(manager, property, parent) : nullptr;
    }

    /// Serves `manager`, which stays with its owner. Nothing happens when it is served already.
    void addPropertyManager(PropertyManager* manager)
    {
        if (!manager || _managers.contains(manager))
            return;
        _managers.insert(manager, manager);
        connectPropertyManager(manager);
        connect(manager, &QObject::destroyed, this, &QtAbstractEditorFactory::managerDestroyed);
    }

    /// Ends the service to `manager`. Editors made for it stay on the screen but are no longer tied to it.
    void removePropertyManager(PropertyManager* manager)
    {
        if (!_managers.remove(manager))
            return;
        disconnect(manager, &QObject::destroyed, this, &QtAbstractEditorFactory::managerDestroyed);
        disconnectPropertyManager(manager);
    }

    QSet<PropertyManager*> propertyManagers() const
    {
        QSet<PropertyManager*> managers;
        for (PropertyManager* manager : _managers)
            managers.insert(manager);
        return managers;
    }

    /// The served manager of `property`, or null when that manager is not served here.
    PropertyManager* propertyManager(QtProperty* property) const
    {
        return property ? _managers.value(property->propertyManager()) : nullptr;
    }

protected:
    virtual void connectPropertyManager(PropertyManager* manager) = 0;
    virtual QWidget* createEditor(PropertyManager* manager, QtProperty* property, QWidget* parent) = 0;
    virtual void disconnectPropertyManager(PropertyManager* manager) = 0;

    void breakConnection(QtAbstractPropertyManager* manager) override
    {
        removePropertyManager(_managers.value(manager));
    }

    void managerDestroyed(QObject* manager) override { _managers.remove(manager); }

private:
    // Keyed by the object, because a manager that is being destroyed is only that any more.
    QHash<const QObject*, PropertyManager*> _managers;
};

/// The place of one property in one browser. A property has one item for each place where the browser shows
/// it.
///
/// Made and owned by the browser; gone as soon as the property leaves that place.
///
/// Thread: GUI thread.
class QtBrowserItem
{
public:
    QtProperty* property() const;
    /// The item that this one is shown under, or null at top level.
    QtBrowserItem* parent() const;
    QList<QtBrowserItem*> children() const;
    QtAbstractPropertyBrowser* browser() const;

private:
    Q_DISABLE_COPY(QtBrowserItem)
    friend class QtAbstractPropertyBrowser;

    QtBrowserItem(QtAbstractPropertyBrowser* browser, QtProperty* property, QtBrowserItem* parent);
    ~QtBrowserItem();

    QtAbstractPropertyBrowser* const _browser;
    QtProperty* const _property;
    QtBrowserItem* const _parent;
    QList<QtBrowserItem*> _children;
};

/// Shows properties with their sub-properties; a subclass decides how that looks.
///
/// First call setFactoryForManager() for each manager whose properties are to be edited, then addProperty():
/// a property added before its factory is shown without an editor. The browser borrows managers, factories
/// and properties; each may be deleted before it.
///
/// Thread: GUI thread.
class QtAbstractPropertyBrowser : public QWidget
{
    Q_OBJECT

public:
    explicit QtAbstractPropertyBrowser(QWidget* parent = nullptr);
    ~QtAbstractPropertyBrowser() override;

    /// The properties at top level, in the order shown.
    QList<QtProperty*> properties() const;
    /// Every item that shows `property`, in no order.
    QList<QtBrowserItem*> items(QtProperty* property) const;
    /// The item of `property` at top level, or null when it is not shown there.
    QtBrowserItem* topLevelItem(QtProperty* property) const;
    QList<QtBrowserItem*> topLevelItems() const;
    /// Removes all properties from this browser.
    void clear();

    /// Has `factory` make the editors for the properties of `manager` in this browser, instead of any factory
    /// before.
    template<class PropertyManager>
    void setFactoryForManager(PropertyManager* manager, QtAbstractEditorFactory<PropertyManager>* factory)
    {
        // First, so that a manager that only this browser uses is not given up in between.
        factory->addPropertyManager(manager);
        useFactory(manager, factory);
    }

    /// Makes no more editors for the properties of `manager` in this browser. The factory gives the manager
    /// up when no other browser uses it for that manager.
    void unsetFactoryForManager(QtAbstractPropertyManager* manager);

    QtBrowserItem* currentItem() const;
    void setCurrentItem(QtBrowserItem* item);

Q_SIGNALS:
    void currentItemChanged(QtBrowserItem* item);

public Q_SLOTS:
    /// Shows `property` at the end of the top level. Returns its item, or null when it was null or shown
    /// there already.
    QtBrowserItem* addProperty(QtProperty* property);
    /// Shows `property` at top level behind `afterProperty`, or first when that is null or not shown there.
    /// Returns its item, or null when `property` was null or shown there already.
    QtBrowserItem* insertProperty(QtProperty* property, QtProperty* afterProperty);
    /// Takes `property` away from the top level. Nothing happens when it is not there.
    void removeProperty(QtProperty* property);

protected:
    /// `item` is now in the lists of this browser, behind `afterItem` (null: first under its parent).
    virtual void itemInserted(QtBrowserItem* item, QtBrowserItem* afterItem) = 0;
    /// `item`, whose children have been removed before it, is no longer in the lists and is about to be
    /// deleted.
    virtual void itemRemoved(QtBrowserItem* item) = 0;
    /// Something shown of the property of `item` has changed.
    virtual void itemChanged(QtBrowserItem* item) = 0;
    /// Makes an editor for `property` with the factory set for its manager; null when there is none.
    virtual QWidget* createEditor(QtProperty* property, QWidget* parent);

private:
    void useFactory(QtAbstractPropertyManager* manager, QtAbstractEditorFactoryBase* factory);
    void watch(QtAbstractPropertyManager* manager);
    void forget(QtAbstractPropertyManager* manager);
    QtBrowserItem* createItem(QtProperty* property, QtBrowserItem* parent, QtBrowserItem* after);
    void removeItem(QtBrowserItem* item);
    QList<QtBrowserItem*>& siblings(QtBrowserItem* parent);
    QtBrowserItem* itemOf(QtProperty* property, QtBrowserItem* parent) const;
    void onPropertyInserted(QtProperty* property, QtProperty* parent, QtProperty* after);
    void onPropertyRemoved(QtProperty* property, QtProperty* parent);
    void onPropertyChanged(QtProperty* property);

    QHash<QtAbstractPropertyManager*, QPointer<QtAbstractEditorFactoryBase>> _factories;
    QSet<QtAbstractPropertyManager*> _watched;
    QList<QtBrowserItem*> _topLevelItems;
    QMultiHash<QtProperty*, QtBrowserItem*> _itemsByProperty;
    QtBrowserItem* _currentItem = nullptr;
};
