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
        connect(
            manager, &QtAbstractPropertyManager::propertyDestroyed, this,
            [this, property](QtProperty* destroyed) {
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

QtSpinBoxFactory::QtSpinBoxFactory(QObject* parent)
    : QtAbstractEditorFactory<QtIntPropertyManager>(parent)
    , _links(std::make_unique<QtEditorLinks>())
{
}

QtSpinBoxFactory::~QtSpinBoxFactory() = default;

void QtSpinBoxFactory::connectPropertyManager(QtIntPropertyManager*)
{
    // Each editor makes its own connections.
}

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
    QObject* link = _links->tie(editor, manager, property);
    refreshOnChanges(manager, link, refresh);
    connect(editor, qOverload<int>(&QSpinBox::valueChanged), link,
            [=](int value) { manager->setValue(property, value); });
    return editor;
}

void QtSpinBoxFactory::disconnectPropertyManager(QtIntPropertyManager* manager)
{
    _links->cut(manager);
}

QtSliderFactory::QtSliderFactory(QObject* parent)
    : QtAbstractEditorFactory<QtIntPropertyManager>(parent)
    , _links(std::make_unique<QtEditorLinks>())
{
}

QtSliderFactory::~QtSliderFactory() = default;

void QtSliderFactory::connectPropertyManager(QtIntPropertyManager*)
{
    // Each editor makes its own connections.
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
    QObject* link = _links->tie(editor, manager, property);
    refreshOnChanges(manager, link, refresh);
    connect(editor, &QSlider::valueChanged, link, [=](int value) {
        if (manager->isReadOnly(property))
            refresh(property);
        else
            manager->setValue(property, value);
    });
    return editor;
}

void QtSliderFactory::disconnectPropertyManager(QtIntPropertyManager* manager)
{
    _links->cut(manager);
}

QtEnumEditorFactory::QtEnumEditorFactory(QObject* parent)
    : QtAbstractEditorFactory<QtEnumPropertyManager>(parent)
    , _links(std::make_unique<QtEditorLinks>())
{
}

QtEnumEditorFactory::~QtEnumEditorFactory() = default;

void QtEnumEditorFactory::connectPropertyManager(QtEnumPropertyManager*)
{
    // Each editor makes its own connections.
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
    QObject* link = _links->tie(editor, manager, property);
    connect(manager, &QtEnumPropertyManager::enumNamesChanged, link, refill);
    connect(manager, &QtEnumPropertyManager::enumIconsChanged, link, refill);
    connect(
        manager, &QtEnumPropertyManager::valueChanged, link,
        [=](const QtProperty* changed) {
            if (changed == property) {
                const QSignalBlocker blocker(editor);
                editor->setCurrentIndex(manager->value(property));
            }
        });
    connect(editor, qOverload<int>(&QComboBox::currentIndexChanged), link,
            [=](int index) { manager->setValue(property, index); });
    return editor;
}

void QtEnumEditorFactory::disconnectPropertyManager(QtEnumPropertyManager* manager)
{
    _links->cut(manager);
}
