// SPDX-License-Identifier: Apache-2.0
// The factories of spin boxes, sliders and combo boxes.
#pragma once

#include "qtpropertymanager.h"

#include <memory>

class QtEditorLinks;

/// What the factories have in common: each editor is tied to its property until one of them goes or the factory ends
/// its service. Deleting the factory deletes its editors.
///
/// Thread: GUI thread.
template<class PropertyManager>
class QtTyingEditorFactory : public QtAbstractEditorFactory<PropertyManager>
{
public:
    explicit QtTyingEditorFactory(QObject* parent = nullptr);
    ~QtTyingEditorFactory() override;

protected:
    /// Makes the context for the connections between an editor and its manager, which end with it.
    QObject* tie(QWidget* editor, PropertyManager* manager, QtProperty* property);

    /// Does nothing: each editor makes its own connections.
    void connectPropertyManager(PropertyManager* manager) override;
    void disconnectPropertyManager(PropertyManager* manager) override;

private:
    const std::unique_ptr<QtEditorLinks> _links;
};

/// Edits the properties of integer managers in spin boxes.
///
/// A typed number counts once it is finished with Enter, Tab or a step.
///
/// Thread: GUI thread.
class QtSpinBoxFactory : public QtTyingEditorFactory<QtIntPropertyManager>
{
    Q_OBJECT

public:
    using QtTyingEditorFactory::QtTyingEditorFactory;

protected:
    QWidget* createEditor(QtIntPropertyManager* manager, QtProperty* property, QWidget* parent) override;
};

/// Edits the properties of integer managers with horizontal sliders.
///
/// The slider of a property that is read-only springs back.
///
/// Thread: GUI thread.
class QtSliderFactory : public QtTyingEditorFactory<QtIntPropertyManager>
{
    Q_OBJECT

public:
    using QtTyingEditorFactory::QtTyingEditorFactory;

protected:
    QWidget* createEditor(QtIntPropertyManager* manager, QtProperty* property, QWidget* parent) override;
};

/// Edits the properties of enumeration managers in combo boxes.
///
/// Thread: GUI thread.
class QtEnumEditorFactory : public QtTyingEditorFactory<QtEnumPropertyManager>
{
    Q_OBJECT

public:
    using QtTyingEditorFactory::QtTyingEditorFactory;

protected:
    QWidget* createEditor(QtEnumPropertyManager* manager, QtProperty* property, QWidget* parent) override;
};
