// SPDX-License-Identifier: Apache-2.0
// Editors, each tied to its property by a link that ends with whichever of them goes first.
#include "qteditorfactory.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

namespace {

// The context of every connection between one editor and the manager of its property. A child of the editor.
class EditorLink : public QObject
{
public:
    EditorLink(QWidget* editorWidget, QtAbstractPropertyManager* propertyManager, QtProperty* property)
        : QObject(editorWidget)
        , editor(editorWidget)
        , manager(propertyManager)
    {
        connect(manager, &QtAbstractPropertyManager::propertyDestroyed, this,
                [this, property](const QtProperty* destroyed) {
                    if (destroyed == property)
                        delete this;
                });
    }

    QWidget* const editor;
    QtAbstractPropertyManager* const manager;
};

} // namespace

/// The links of all editors that one factory has made.
class QtEditorLinks
{
public:
    ~QtEditorLinks()
    {
        for (const QPointer<EditorLink>& link : qAsConst(_links))
            if (link)
                delete link->editor;
    }

    QObject* tie(QWidget* editor, QtAbstractPropertyManager* manager, QtProperty* property)
    {
        _links.removeAll(nullptr);
        auto* link = new EditorLink(editor, manager, property);
        _links.append(link);
        return link;
    }

    void cut(const QtAbstractPropertyManager* manager)
    {
        for (const QPointer<EditorLink>& link : qAsConst(_links))
            if (link && link->manager == manager)
                delete link;
    }

private:
    QList<QPointer<EditorLink>> _links;
};

template<class PropertyManager>
QtTyingEditorFactory<PropertyManager>::QtTyingEditorFactory(QObject* parent)
    : QtAbstractEditorFactory<PropertyManager>(parent)
    , _links(std::make_unique<QtEditorLinks>())
{
}

template<class PropertyManager>
QtTyingEditorFactory<PropertyManager>::~QtTyingEditorFactory() = default;

template<class PropertyManager>
QObject* QtTyingEditorFactory<PropertyManager>::tie(QWidget* editor, PropertyManager* manager, QtProperty* property)
{
    return _links->tie(editor, manager, property);
}

template<class PropertyManager>
void QtTyingEditorFactory<PropertyManager>::connectPropertyManager(PropertyManager*)
{
}

template<class PropertyManager>
void QtTyingEditorFactory<PropertyManager>::disconnectPropertyManager(PropertyManager* manager)
{
    _links->cut(manager);
}

template class QtTyingEditorFactory<QtIntPropertyManager>;
template class QtTyingEditorFactory<QtEnumPropertyManager>;

namespace {

// Every change shows the manager's present value rather than the one that was sent: a receiver that was told
// before the editor may already have set another.
template<class Refresh>
void refreshOnChanges(QtIntPropertyManager* manager, QObject* link, const Refresh& refresh)
{
    QObject::connect(manager, &QtIntPropertyManager::valueChanged, link, refresh);
    QObject::connect(manager, &QtIntPropertyManager::rangeChanged, link, refresh);
    QObject::connect(manager, &QtIntPropertyManager::singleStepChanged, link, refresh);
    QObject::connect(manager, &QtIntPropertyManager::readOnlyChanged, link, refresh);
}

} // namespace

QWidget* QtSpinBoxFactory::createEditor(QtIntPropertyManager* manager, QtProperty* property, QWidget* parent)
{
    auto* editor = new QSpinBox(parent);
    editor->setKeyboardTracking(false);
    const auto refresh = [=](const QtProperty* changed) {
        if (changed == property) {
            const QSignalBlocker blocker(editor);
            editor->setReadOnly(manager->isReadOnly(property));
            editor->setSingleStep(manager->singleStep(property));
            editor->setRange(manager->minimum(property), manager->maximum(property));
            editor->setValue(manager->value(property));
        }
    };
    refresh(property);
    QObject* link = tie(editor, manager, property);
    refreshOnChanges(manager, link, refresh);
    connect(editor, qOverload<int>(&QSpinBox::valueChanged), link,
            [=](int value) { manager->setValue(property, value); });
    return editor;
}

QWidget* QtSliderFactory::createEditor(QtIntPropertyManager* manager, QtProperty* property, QWidget* parent)
{
    auto* editor = new QSlider(Qt::Horizontal, parent);
    const auto refresh = [=](const QtProperty* changed) {
        if (changed == property) {
            const QSignalBlocker blocker(editor);
            editor->setSingleStep(manager->singleStep(property));
            editor->setRange(manager->minimum(property), manager->maximum(property));
            editor->setValue(manager->value(property));
        }
    };
    refresh(property);
    QObject* link = tie(editor, manager, property);
    refreshOnChanges(manager, link, refresh);
    connect(editor, &QSlider::valueChanged, link, [=](int value) {
        if (manager->isReadOnly(property))
            refresh(property);
        else
            manager->setValue(property, value);
    });
    return editor;
}

QWidget* QtEnumEditorFactory::createEditor(QtEnumPropertyManager* manager, QtProperty* property, QWidget* parent)
{
    auto* editor = new QComboBox(parent);
    const auto refill = [=](const QtProperty* changed) {
        if (changed == property) {
            const QSignalBlocker blocker(editor);
            const QStringList names = manager->enumNames(property);
            const QMap<int, QIcon> icons = manager->enumIcons(property);
            editor->clear();
            for (int i = 0; i < names.size(); ++i)
                editor->addItem(icons.value(i), names.at(i));
            editor->setCurrentIndex(manager->value(property));
        }
    };
    refill(property);
    QObject* link = tie(editor, manager, property);
    connect(manager, &QtEnumPropertyManager::enumNamesChanged, link, refill);
    connect(manager, &QtEnumPropertyManager::enumIconsChanged, link, refill);
    connect(manager, &QtEnumPropertyManager::valueChanged, link, [=](const QtProperty* changed) {
        if (changed == property) {
            const QSignalBlocker blocker(editor);
            editor->setCurrentIndex(manager->value(property));
        }
    });
    connect(editor, qOverload<int>(&QComboBox::currentIndexChanged), link,
            [=](int index) { manager->setValue(property, index); });
    return editor;
}
