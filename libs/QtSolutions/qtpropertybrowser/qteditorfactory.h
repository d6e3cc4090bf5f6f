// SPDX-License-Identifier: Apache-2.0
// The factories of spin boxes, sliders and combo boxes.
#pragma once

#include "qtpropertymanager.h"

#include <memory>

class QtEditorLinks;

/// Edits the properties of integer managers in spin boxes.
///
/// A typed number counts once it is finished with Enter, Tab or a step. Deleting the factory deletes its
/// editors.
///
/// Thread: GUI thread.
class QtSpinBoxFactory : public QtAbstractEditorFactory<QtIntPropertyManager>
{
    Q_OBJECT

public:
    explicit QtSpinBoxFactory(QObject* parent = nullptr);
    ~QtSpinBoxFactory() override;

protected:
    void connectPropertyManager(QtIntPropertyManager* manager) override;
    QWidget* createEditor(QtIntPropertyManager* manager, QtProperty* property, QWidget* parent) override;
    void disconnectPropertyManager(QtIntPropertyManager* manager) override;

private:
    const std::unique_ptr<QtEditorLinks> _links;
};

/// Edits the properties of integer managers with horizontal sliders.
///
/// The slider of a property that is read-only springs back. Deleting the factory deletes its editors.
///
/// Thread: GUI thread.
class QtSliderFactory : public QtAbstractEditorFactory<QtIntPropertyManager>
{
    Q_OBJECT

public:
    explicit QtSliderFactory(QObject* parent = nullptr);
    ~QtSliderFactory() override;

protected:
    void connectPropertyManager(QtIntPropertyManager* manager) override;
    QWidget* createEditor(QtIntPropertyManager* manager, QtProperty* property, QWidget* parent) override;
    void disconnectPropertyManager(QtIntPropertyManager* manager) override;

private:
    const std::unique_ptr<QtEditorLinks> _links;
};

/// Edits the properties of enumeration managers in combo boxes.
///
/// Deleting the factory deletes its editors.
///
/// Thread: GUI thread.
class QtEnumEditorFactory : public QtAbstractEditorFactory<QtEnumPropertyManager>
{
    Q_OBJECT

public:
    explicit QtEnumEditorFactory(QObject* parent = nullptr);
    ~QtEnumEditorFactory() override;

protected:
    void connectPropertyManager(QtEnumPropertyManager* manager) override;
    QWidget* createEditor(QtEnumPropertyManager* manager, QtProperty* property, QWidget* parent) override;
    void disconnectPropertyManager(QtEnumPropertyManager* manager) override;

private:
    const std::unique_ptr<QtEditorLinks> _links;
};
