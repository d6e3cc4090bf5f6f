// SPDX-License-Identifier: Apache-2.0
// Properties edited through real spin boxes, sliders and combo boxes, and the order in which parts may go.
#include <QtAbstractEditorFactory>
#include <QtAbstractPropertyBrowser>
#include <QtAbstractPropertyManager>
#include <QtBrowserItem>
#include <QtEnumEditorFactory>
#include <QtEnumPropertyManager>
#include <QtGroupBoxPropertyBrowser>
#include <QtGroupPropertyManager>
#include <QtIntPropertyManager>
#include <QtProperty>
#include <QtSliderFactory>
#include <QtSpinBoxFactory>

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace {

void deliverDeferredDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

template<class Widget>
QStringList visibleTexts(QWidget* parent)
{
    QStringList texts;
    for (const Widget* widget : parent->findChildren<Widget*>())
        if (widget->isVisible())
            texts.append(widget->text());
    return texts;
}

int topOf(const QWidget* widget, const QWidget* ancestor)
{
    return widget->mapTo(ancestor, QPoint(0, 0)).y();
}

/// Everything on the heap, so that a test can delete the pieces in the order that it wants to see survive.
class Grid
{
public:
    QtIntPropertyManager* numbers = new QtIntPropertyManager;
    QtEnumPropertyManager* choices = new QtEnumPropertyManager;
    QtGroupPropertyManager* groups = new QtGroupPropertyManager;
    QtSpinBoxFactory* spinBoxes = new QtSpinBoxFactory;
    QtSliderFactory* sliders = new QtSliderFactory;
    QtEnumEditorFactory* comboBoxes = new QtEnumEditorFactory;
};

class QtPropertyBrowserTest : public testing::Test
{
protected:
    QtPropertyBrowserTest()
    {
        browser.setFactoryForManager(&numbers, &spinBoxes);
        browser.setFactoryForManager(&choices, &comboBoxes);
        sliderBrowser.setFactoryForManager(&numbers, &sliders);
    }

    void show(QWidget& widget)
    {
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    }

    QtIntPropertyManager numbers;
    QtEnumPropertyManager choices;
    QtGroupPropertyManager groups;
    QtSpinBoxFactory spinBoxes;
    QtSliderFactory sliders;
    QtEnumEditorFactory comboBoxes;
    QtGroupBoxPropertyBrowser browser;
    QtGroupBoxPropertyBrowser sliderBrowser;
};

// --- values and ranges -------------------------------------------------------------------------------------

TEST(QtIntPropertyManagerTest, NewPropertyIsZeroWithoutLimits)
{
    QtIntPropertyManager manager;
    const QtProperty* property = manager.addProperty(QStringLiteral("Width"));

    EXPECT_EQ(property->propertyName(), QStringLiteral("Width"));
    EXPECT_EQ(property->propertyManager(), &manager);
    EXPECT_EQ(manager.value(property), 0);
    EXPECT_EQ(manager.minimum(property), -INT_MAX);
    EXPECT_EQ(manager.maximum(property), INT_MAX);
    EXPECT_EQ(manager.singleStep(property), 1);
    EXPECT_FALSE(manager.isReadOnly(property));
    EXPECT_EQ(property->valueText(), QStringLiteral("0"));
    EXPECT_TRUE(property->hasValue());
}

TEST(QtIntPropertyManagerTest, ValueIsKeptWithinTheRange)
{
    QtIntPropertyManager manager;
    QtProperty* property = manager.addProperty();
    manager.setRange(property, 10, 20);

    EXPECT_EQ(manager.value(property), 10);
    manager.setValue(property, 99);
    EXPECT_EQ(manager.value(property), 20);
    manager.setValue(property, -99);
    EXPECT_EQ(manager.value(property), 10);
}

TEST(QtIntPropertyManagerTest, SignalsComeOnceAndOnlyForChanges)
{
    QtIntPropertyManager manager;
    QtProperty* property = manager.addProperty();
    QSignalSpy values(&manager, &QtIntPropertyManager::valueChanged);
    QSignalSpy ranges(&manager, &QtIntPropertyManager::rangeChanged);
    QSignalSpy steps(&manager, &QtIntPropertyManager::singleStepChanged);

    manager.setRange(property, 5, 7);
    manager.setRange(property, 5, 7);
    manager.setValue(property, 6);
    manager.setValue(property, 6);
    manager.setSingleStep(property, 4);
    manager.setSingleStep(property, 4);

    ASSERT_EQ(ranges.count(), 1);
    EXPECT_EQ(ranges.at(0).at(1).toInt(), 5);
    EXPECT_EQ(ranges.at(0).at(2).toInt(), 7);
    ASSERT_EQ(values.count(), 2);
    EXPECT_EQ(values.at(0).at(1).toInt(), 5);
    EXPECT_EQ(values.at(1).at(1).toInt(), 6);
    ASSERT_EQ(steps.count(), 1);
    EXPECT_EQ(steps.at(0).at(1).toInt(), 4);
}

TEST(QtIntPropertyManagerTest, RangeIsAnnouncedBeforeTheValueItMoved)
{
    QtIntPropertyManager manager;
    QtProperty* property = manager.addProperty();
    QStringList order;
    QObject::connect(&manager, &QtIntPropertyManager::rangeChanged, [&] { order << QStringLiteral("range"); });
    QObject::connect(&manager, &QtIntPropertyManager::valueChanged, [&] { order << QStringLiteral("value"); });

    manager.setRange(property, 3, 9);

    EXPECT_EQ(order, QStringList({QStringLiteral("range"), QStringLiteral("value")}));
}

TEST(QtIntPropertyManagerTest, RangeGivenInTheWrongOrderIsTurnedRound)
{
    QtIntPropertyManager manager;
    QtProperty* property = manager.addProperty();
    manager.setRange(property, 16777215, 0);

    EXPECT_EQ(manager.minimum(property), 0);
    EXPECT_EQ(manager.maximum(property), 16777215);
}

TEST(QtIntPropertyManagerTest, MinimumAndMaximumPushEachOther)
{
    QtIntPropertyManager manager;
    QtProperty* property = manager.addProperty();
    manager.setRange(property, 0, 10);
    manager.setMinimum(property, 30);
    EXPECT_EQ(manager.maximum(property), 30);
    EXPECT_EQ(manager.value(property), 30);
    manager.setMaximum(property, -30);
    EXPECT_EQ(manager.minimum(property), -30);
    EXPECT_EQ(manager.value(property), -30);
}

TEST(QtIntPropertyManagerTest, PropertyOfAnotherManagerIsLeftAlone)
{
    QtIntPropertyManager manager;
    QtIntPropertyManager other;
    QtProperty* foreign = other.addProperty();
    QSignalSpy values(&manager, &QtIntPropertyManager::valueChanged);
    manager.setRange(foreign, 1, 2);
    manager.setMinimum(foreign, 1);
    manager.setMaximum(foreign, 1);
    manager.setValue(foreign, 5);
    manager.setSingleStep(foreign, 5);
    manager.setReadOnly(foreign, true);

    EXPECT_EQ(values.count(), 0);
    EXPECT_EQ(manager.value(foreign), 0);
    EXPECT_EQ(other.value(foreign), 0);
    EXPECT_EQ(other.singleStep(foreign), 1);
    EXPECT_FALSE(other.isReadOnly(foreign));
}

TEST(QtEnumPropertyManagerTest, NamesChooseTheFirst)
{
    QtEnumPropertyManager manager;
    QtProperty* property = manager.addProperty();
    EXPECT_EQ(manager.value(property), -1);
    QSignalSpy names(&manager, &QtEnumPropertyManager::enumNamesChanged);
    QSignalSpy values(&manager, &QtEnumPropertyManager::valueChanged);

    manager.setEnumNames(property, {QStringLiteral("1x1"), QStringLiteral("2x2")});
    EXPECT_EQ(manager.value(property), 0);
    EXPECT_EQ(property->valueText(), QStringLiteral("1x1"));
    manager.setEnumNames(property, {});
    EXPECT_EQ(manager.value(property), -1);
    EXPECT_EQ(names.count(), 2);
    EXPECT_EQ(values.count(), 2);
}

TEST(QtEnumPropertyManagerTest, PositionWithoutNameIsRefused)
{
    QtEnumPropertyManager manager;
    QtProperty* property = manager.addProperty();
    manager.setEnumNames(property, {QStringLiteral("1x1"), QStringLiteral("2x2")});
    manager.setValue(property, 1);
    manager.setValue(property, 2);
    EXPECT_EQ(manager.value(property), 1);
    manager.setValue(property, -1);
    EXPECT_EQ(manager.value(property), 1);
}

TEST(QtEnumPropertyManagerTest, IconsStandBesideTheirNames)
{
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    QtEnumPropertyManager manager;
    QtProperty* property = manager.addProperty();
    manager.setEnumNames(property, {QStringLiteral("off"), QStringLiteral("on")});
    QSignalSpy icons(&manager, &QtEnumPropertyManager::enumIconsChanged);
    manager.setEnumIcons(property, {{1, QIcon(pixmap)}});

    EXPECT_EQ(icons.count(), 1);
    EXPECT_TRUE(property->valueIcon().isNull());
    manager.setValue(property, 1);
    EXPECT_FALSE(property->valueIcon().isNull());
}

TEST(QtGroupPropertyManagerTest, GroupHasNoValue)
{
    QtGroupPropertyManager manager;
    EXPECT_FALSE(manager.addProperty()->hasValue());
}

// --- the graph of properties -------------------------------------------------------------------------------

TEST(QtPropertyTest, SubPropertiesStandInTheOrderGiven)
{
    QtIntPropertyManager manager;
    QtProperty* parent = manager.addProperty();
    QtProperty* a = manager.addProperty();
    QtProperty* b = manager.addProperty();
    QtProperty* c = manager.addProperty();
    parent->addSubProperty(a);
    parent->addSubProperty(b);
    parent->insertSubProperty(c, a);
    EXPECT_EQ(parent->subProperties(), QList<QtProperty*>({a, c, b}));
    parent->removeSubProperty(c);
    parent->insertSubProperty(c, nullptr);
    EXPECT_EQ(parent->subProperties(), QList<QtProperty*>({c, a, b}));
}

TEST(QtPropertyTest, PropertyNeverComesBelowItself)
{
    QtIntPropertyManager manager;
    QtProperty* top = manager.addProperty();
    QtProperty* middle = manager.addProperty();
    QtProperty* bottom = manager.addProperty();
    top->addSubProperty(middle);
    middle->addSubProperty(bottom);
    bottom->addSubProperty(top);
    top->addSubProperty(top);
    top->addSubProperty(nullptr);
    top->addSubProperty(middle);

    EXPECT_TRUE(bottom->subProperties().isEmpty());
    EXPECT_EQ(top->subProperties(), QList<QtProperty*>({middle}));
}

TEST(QtPropertyTest, DeletedPropertyLeavesItsParentsAndItsManager)
{
    QtIntPropertyManager manager;
    QtProperty* first = manager.addProperty();
    QtProperty* second = manager.addProperty();
    QtProperty* shared = manager.addProperty();
    QtProperty* child = manager.addProperty();
    first->addSubProperty(shared);
    second->addSubProperty(shared);
    shared->addSubProperty(child);
    QSignalSpy destroyed(&manager, &QtAbstractPropertyManager::propertyDestroyed);

    delete shared;

    EXPECT_EQ(destroyed.count(), 1);
    EXPECT_TRUE(first->subProperties().isEmpty());
    EXPECT_TRUE(second->subProperties().isEmpty());
    EXPECT_EQ(manager.properties(), QSet<QtProperty*>({first, second, child}));
    delete child;
    manager.clear();
    EXPECT_TRUE(manager.properties().isEmpty());
}

// --- editors in step with their manager --------------------------------------------------------------------

TEST_F(QtPropertyBrowserTest, ValueSetThroughTheManagerMovesSpinBoxAndSlider)
{
    QtProperty* property = numbers.addProperty();
    numbers.setRange(property, 0, 100);
    browser.addProperty(property);
    sliderBrowser.addProperty(property);

    numbers.setValue(property, 42);

    EXPECT_EQ(browser.findChild<QSpinBox*>()->value(), 42);
    EXPECT_EQ(sliderBrowser.findChild<QSlider*>()->value(), 42);
}

TEST_F(QtPropertyBrowserTest, KeyInTheSpinBoxMovesTheSlider)
{
    QtProperty* property = numbers.addProperty();
    numbers.setRange(property, 0, 100);
    numbers.setSingleStep(property, 4);
    browser.addProperty(property);
    sliderBrowser.addProperty(property);
    show(browser);

    QTest::keyClick(browser.findChild<QSpinBox*>(), Qt::Key_Up);

    EXPECT_EQ(numbers.value(property), 4);
    EXPECT_EQ(sliderBrowser.findChild<QSlider*>()->value(), 4);
}

TEST_F(QtPropertyBrowserTest, KeyOnTheSliderMovesTheSpinBox)
{
    QtProperty* property = numbers.addProperty();
    numbers.setRange(property, 0, 100);
    numbers.setSingleStep(property, 3);
    browser.addProperty(property);
    sliderBrowser.addProperty(property);
    show(sliderBrowser);

    QTest::keyClick(sliderBrowser.findChild<QSlider*>(), Qt::Key_Right);

    EXPECT_EQ(numbers.value(property), 3);
    EXPECT_EQ(browser.findChild<QSpinBox*>()->value(), 3);
}

TEST_F(QtPropertyBrowserTest, TypedNumberCountsOnceItIsFinished)
{
    QtProperty* property = numbers.addProperty();
    numbers.setRange(property, 0, 1000);
    browser.addProperty(property);
    show(browser);
    auto* spinBox = browser.findChild<QSpinBox*>();
    QSignalSpy values(&numbers, &QtIntPropertyManager::valueChanged);

    spinBox->selectAll();
    QTest::keyClicks(spinBox, QStringLiteral("123"));
    EXPECT_EQ(values.count(), 0);
    QTest::keyClick(spinBox, Qt::Key_Return);

    EXPECT_EQ(values.count(), 1);
    EXPECT_EQ(numbers.value(property), 123);
}

TEST_F(QtPropertyBrowserTest, RangeAndStepReachTheEditors)
{
    QtProperty* property = numbers.addProperty();
    browser.addProperty(property);
    sliderBrowser.addProperty(property);
    const auto* spinBox = browser.findChild<QSpinBox*>();
    const auto* slider = sliderBrowser.findChild<QSlider*>();

    numbers.setRange(property, 64, 752);
    numbers.setSingleStep(property, 4);

    EXPECT_EQ(spinBox->minimum(), 64);
    EXPECT_EQ(spinBox->maximum(), 752);
    EXPECT_EQ(spinBox->singleStep(), 4);
    EXPECT_EQ(spinBox->value(), 64);
    EXPECT_EQ(slider->minimum(), 64);
    EXPECT_EQ(slider->maximum(), 752);
    EXPECT_EQ(slider->singleStep(), 4);
    EXPECT_EQ(slider->value(), 64);
}

TEST_F(QtPropertyBrowserTest, ReadOnlyPropertyCannotBeEdited)
{
    QtProperty* property = numbers.addProperty();
    numbers.setRange(property, 0, 10);
    browser.addProperty(property);
    sliderBrowser.addProperty(property);
    numbers.setReadOnly(property, true);
    show(browser);
    show(sliderBrowser);

    QTest::keyClick(browser.findChild<QSpinBox*>(), Qt::Key_Up);
    QTest::keyClick(sliderBrowser.findChild<QSlider*>(), Qt::Key_Right);

    EXPECT_EQ(numbers.value(property), 0);
    EXPECT_EQ(sliderBrowser.findChild<QSlider*>()->value(), 0);
    numbers.setValue(property, 7);
    EXPECT_EQ(browser.findChild<QSpinBox*>()->value(), 7);
    EXPECT_EQ(sliderBrowser.findChild<QSlider*>()->value(), 7);
}

TEST_F(QtPropertyBrowserTest, KeyInTheComboBoxChoosesTheNextName)
{
    QtProperty* property = choices.addProperty();
    choices.setEnumNames(property, {QStringLiteral("1x1"), QStringLiteral("1x2"), QStringLiteral("2x2")});
    browser.addProperty(property);
    show(browser);
    auto* comboBox = browser.findChild<QComboBox*>();
    QSignalSpy values(&choices, &QtEnumPropertyManager::valueChanged);

    QTest::keyClick(comboBox, Qt::Key_Down);
    EXPECT_EQ(choices.value(property), 1);
    choices.setValue(property, 2);
    EXPECT_EQ(comboBox->currentText(), QStringLiteral("2x2"));
    EXPECT_EQ(values.count(), 2);
}

TEST_F(QtPropertyBrowserTest, ComboBoxFollowsNewNamesAndIcons)
{
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::blue);
    QtProperty* property = choices.addProperty();
    browser.addProperty(property);
    const auto* comboBox = browser.findChild<QComboBox*>();
    EXPECT_EQ(comboBox->count(), 0);

    choices.setEnumNames(property, {QStringLiteral("a"), QStringLiteral("b")});
    EXPECT_EQ(comboBox->count(), 2);
    choices.setEnumIcons(property, {{1, QIcon(pixmap)}});

    ASSERT_EQ(comboBox->count(), 2);
    EXPECT_EQ(comboBox->currentIndex(), 0);
    EXPECT_TRUE(comboBox->itemIcon(0).isNull());
    EXPECT_FALSE(comboBox->itemIcon(1).isNull());
}

// A receiver may answer a change with another one before the editors have heard of the first.
TEST_F(QtPropertyBrowserTest, EditorShowsTheLastWordOfAReceiverThatWasToldFirst)
{
    QtProperty* property = numbers.addProperty();
    numbers.setRange(property, 0, 100);
    numbers.setValue(property, 50);
    QObject::connect(&numbers, &QtIntPropertyManager::valueChanged, [&](QtProperty* changed, int value) {
        if (value == 51)
            numbers.setValue(changed, 50);
    });
    browser.addProperty(property);
    sliderBrowser.addProperty(property);
    show(browser);

    QTest::keyClick(browser.findChild<QSpinBox*>(), Qt::Key_Up);

    EXPECT_EQ(numbers.value(property), 50);
    EXPECT_EQ(browser.findChild<QSpinBox*>()->value(), 50);
    EXPECT_EQ(browser.findChild<QSpinBox*>()->text(), QStringLiteral("50"));
    EXPECT_EQ(sliderBrowser.findChild<QSlider*>()->value(), 50);
}

TEST_F(QtPropertyBrowserTest, OnePropertyIsShownByManyBrowsersAndFactories)
{
    QtSpinBoxFactory moreSpinBoxes;
    QtGroupBoxPropertyBrowser third;
    third.setFactoryForManager(&numbers, &moreSpinBoxes);
    QtProperty* property = numbers.addProperty();
    numbers.setRange(property, 0, 10);
    browser.addProperty(property);
    sliderBrowser.addProperty(property);
    third.addProperty(property);
    show(third);

    QTest::keyClick(third.findChild<QSpinBox*>(), Qt::Key_Up);

    EXPECT_EQ(browser.findChild<QSpinBox*>()->value(), 1);
    EXPECT_EQ(sliderBrowser.findChild<QSlider*>()->value(), 1);
}

TEST_F(QtPropertyBrowserTest, FactoryKeepsItsManagersUntilTheLastBrowserLetsGo)
{
    auto second = std::make_unique<QtGroupBoxPropertyBrowser>();
    second->setFactoryForManager(&numbers, &spinBoxes);
    QtProperty* property = numbers.addProperty();
    EXPECT_EQ(spinBoxes.propertyManager(property), &numbers);

    browser.unsetFactoryForManager(&numbers);
    EXPECT_EQ(spinBoxes.propertyManagers(), QSet<QtIntPropertyManager*>({&numbers}));
    second.reset();
    EXPECT_TRUE(spinBoxes.propertyManagers().isEmpty());

    browser.addProperty(property);
    EXPECT_EQ(browser.findChild<QSpinBox*>(), nullptr);
}

TEST_F(QtPropertyBrowserTest, EditorOfARemovedManagerIsNoLongerTied)
{
    QtProperty* property = numbers.addProperty();
    browser.addProperty(property);
    auto* spinBox = browser.findChild<QSpinBox*>();
    spinBoxes.removePropertyManager(&numbers);

    numbers.setValue(property, 5);
    EXPECT_EQ(spinBox->value(), 0);
    spinBox->setValue(9);
    EXPECT_EQ(numbers.value(property), 5);
}

// --- what the browser shows --------------------------------------------------------------------------------

TEST_F(QtPropertyBrowserTest, GroupIsABoxAroundItsSubProperties)
{
    QtProperty* group = groups.addProperty(QStringLiteral("Resolution"));
    QtProperty* width = numbers.addProperty(QStringLiteral("Width"));
    QtProperty* height = numbers.addProperty(QStringLiteral("Height"));
    group->addSubProperty(width);
    group->addSubProperty(height);
    browser.addProperty(group);
    show(browser);

    auto* box = browser.findChild<QGroupBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->title(), QStringLiteral("Resolution"));
    EXPECT_EQ(visibleTexts<QLabel>(&browser), QStringList({QStringLiteral("Width"), QStringLiteral("Height")}));
    const QList<QSpinBox*> editors = box->findChildren<QSpinBox*>();
    ASSERT_EQ(editors.size(), 2);
    EXPECT_LT(topOf(editors.at(0), box), topOf(editors.at(1), box));
}

TEST_F(QtPropertyBrowserTest, RowBecomesABoxAndARowAgainAsSubPropertiesComeAndGo)
{
    QtProperty* parent = numbers.addProperty(QStringLiteral("Mode"));
    QtProperty* child = numbers.addProperty(QStringLiteral("Rate"));
    browser.addProperty(parent);
    show(browser);
    auto* editor = browser.findChild<QSpinBox*>();

    parent->addSubProperty(child);
    QCoreApplication::processEvents();
    ASSERT_NE(browser.findChild<QGroupBox*>(), nullptr);
    EXPECT_TRUE(browser.findChild<QGroupBox*>()->isAncestorOf(editor));
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(visibleTexts<QLabel>(&browser), QStringList({QStringLiteral("Rate")}));

    parent->removeSubProperty(child);
    deliverDeferredDeletes();
    EXPECT_EQ(browser.findChild<QGroupBox*>(), nullptr);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(visibleTexts<QLabel>(&browser), QStringList({QStringLiteral("Mode")}));
    EXPECT_EQ(browser.findChildren<QSpinBox*>().size(), 1);
}

TEST_F(QtPropertyBrowserTest, InsertedPropertyStandsBehindTheOneNamed)
{
    QtProperty* a = numbers.addProperty(QStringLiteral("a"));
    QtProperty* b = numbers.addProperty(QStringLiteral("b"));
    QtProperty* c = numbers.addProperty(QStringLiteral("c"));
    browser.addProperty(a);
    browser.addProperty(b);
    browser.insertProperty(c, a);
    show(browser);

    EXPECT_EQ(browser.properties(), QList<QtProperty*>({a, c, b}));
    QList<QLabel*> labels = browser.findChildren<QLabel*>();
    std::sort(labels.begin(), labels.end(),
              [&](const QLabel* left, const QLabel* right) { return topOf(left, &browser) < topOf(right, &browser); });
    ASSERT_EQ(labels.size(), 3);
    EXPECT_EQ(labels.at(0)->text(), QStringLiteral("a"));
    EXPECT_EQ(labels.at(1)->text(), QStringLiteral("c"));
    EXPECT_EQ(labels.at(2)->text(), QStringLiteral("b"));
}

TEST_F(QtPropertyBrowserTest, PropertyIsAtTopLevelOnlyOnce)
{
    QtProperty* property = numbers.addProperty();
    QtBrowserItem* item = browser.addProperty(property);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(browser.addProperty(property), nullptr);
    EXPECT_EQ(browser.addProperty(nullptr), nullptr);
    EXPECT_EQ(browser.topLevelItem(property), item);
    EXPECT_EQ(browser.items(property), QList<QtBrowserItem*>({item}));
    EXPECT_EQ(item->browser(), &browser);
    EXPECT_EQ(item->property(), property);
    EXPECT_EQ(item->parent(), nullptr);
    EXPECT_TRUE(item->children().isEmpty());
}

TEST_F(QtPropertyBrowserTest, SharedSubPropertyHasAnItemInEveryPlace)
{
    QtProperty* left = groups.addProperty(QStringLiteral("left"));
    QtProperty* right = groups.addProperty(QStringLiteral("right"));
    QtProperty* shared = numbers.addProperty(QStringLiteral("shared"));
    browser.addProperty(left);
    browser.addProperty(right);
    left->addSubProperty(shared);
    right->addSubProperty(shared);
    EXPECT_EQ(browser.items(shared).size(), 2);
    EXPECT_EQ(browser.findChildren<QSpinBox*>().size(), 2);
    shared->addSubProperty(numbers.addProperty(QStringLiteral("below")));
    EXPECT_EQ(browser.findChildren<QSpinBox*>().size(), 4);

    delete shared;
    deliverDeferredDeletes();
    EXPECT_TRUE(browser.findChildren<QSpinBox*>().isEmpty());
    EXPECT_EQ(browser.topLevelItems().size(), 2);
}

TEST_F(QtPropertyBrowserTest, EmptyNameTakesNoRoom)
{
    QtProperty* property = numbers.addProperty();
    browser.addProperty(property);
    show(browser);
    EXPECT_TRUE(visibleTexts<QLabel>(&browser).isEmpty());
    property->setPropertyName(QStringLiteral("Framerate"));
    QCoreApplication::processEvents();
    EXPECT_EQ(visibleTexts<QLabel>(&browser), QStringList({QStringLiteral("Framerate")}));
}

TEST_F(QtPropertyBrowserTest, RowsStayAtTheTopAndAskForNoMore)
{
    browser.addProperty(numbers.addProperty(QStringLiteral("a")));
    browser.addProperty(numbers.addProperty(QStringLiteral("b")));
    show(browser);
    const int natural = browser.sizeHint().height();
    browser.resize(browser.width(), natural + 500);
    QCoreApplication::processEvents();
    for (const QSpinBox* editor : browser.findChildren<QSpinBox*>())
        EXPECT_LE(topOf(editor, &browser) + editor->height(), natural);
    EXPECT_FALSE(browser.layout()->expandingDirections() & Qt::Vertical);
}

TEST_F(QtPropertyBrowserTest, ValueWithoutFactoryIsText)
{
    QtGroupBoxPropertyBrowser plain;
    QtProperty* property = numbers.addProperty(QStringLiteral("Width"));
    plain.addProperty(property);
    show(plain);
    numbers.setValue(property, 640);
    EXPECT_EQ(visibleTexts<QLabel>(&plain), QStringList({QStringLiteral("Width"), QStringLiteral("640")}));
}

TEST_F(QtPropertyBrowserTest, NameTipsStateAndMarkReachTheWidgets)
{
    QtProperty* property = numbers.addProperty(QStringLiteral("Width"));
    browser.addProperty(property);
    const auto* spinBox = browser.findChild<QSpinBox*>();
    const auto* label = browser.findChild<QLabel*>();

    property->setPropertyName(QStringLiteral("Height"));
    property->setToolTip(QStringLiteral("in pixels"));
    property->setStatusTip(QStringLiteral("status"));
    property->setWhatsThis(QStringLiteral("what"));
    property->setEnabled(false);
    property->setModified(true);

    EXPECT_EQ(label->text(), QStringLiteral("Height"));
    EXPECT_TRUE(label->font().underline());
    EXPECT_EQ(spinBox->toolTip(), QStringLiteral("in pixels"));
    EXPECT_EQ(spinBox->statusTip(), QStringLiteral("status"));
    EXPECT_EQ(spinBox->whatsThis(), QStringLiteral("what"));
    EXPECT_FALSE(spinBox->isEnabled());
}

TEST_F(QtPropertyBrowserTest, CurrentItemIsForgottenWithItsProperty)
{
    QtProperty* property = numbers.addProperty();
    QtBrowserItem* item = browser.addProperty(property);
    int changes = 0;
    QObject::connect(&browser, &QtAbstractPropertyBrowser::currentItemChanged, [&] { ++changes; });
    browser.setCurrentItem(item);
    EXPECT_EQ(browser.currentItem(), item);
    delete property;
    EXPECT_EQ(browser.currentItem(), nullptr);
    EXPECT_EQ(changes, 2);
}

TEST_F(QtPropertyBrowserTest, ClearedBrowserCanShowThePropertiesAgain)
{
    QtProperty* group = groups.addProperty(QStringLiteral("Resolution"));
    group->addSubProperty(numbers.addProperty(QStringLiteral("Width")));
    browser.addProperty(group);
    browser.clear();
    deliverDeferredDeletes();
    EXPECT_TRUE(browser.properties().isEmpty());
    EXPECT_TRUE(browser.findChildren<QWidget*>().isEmpty());

    browser.addProperty(group);
    EXPECT_EQ(browser.findChildren<QSpinBox*>().size(), 1);
}

// --- who may go first --------------------------------------------------------------------------------------

// Every order of deleting the pieces, with two browsers, a group, a slider and a combo box in between.
TEST(QtPropertyBrowserLifetimeTest, PiecesMayBeDeletedInAnyOrder)
{
    QList<int> order({0, 1, 2, 3, 4, 5, 6});
    do {
        Grid grid;
        auto* browser = new QtGroupBoxPropertyBrowser;
        auto* sliderBrowser = new QtGroupBoxPropertyBrowser;
        browser->setFactoryForManager(grid.numbers, grid.spinBoxes);
        browser->setFactoryForManager(grid.choices, grid.comboBoxes);
        sliderBrowser->setFactoryForManager(grid.numbers, grid.sliders);
        QtProperty* group = grid.groups->addProperty(QStringLiteral("g"));
        QtProperty* number = grid.numbers->addProperty(QStringLiteral("n"));
        QtProperty* choice = grid.choices->addProperty(QStringLiteral("c"));
        grid.choices->setEnumNames(choice, {QStringLiteral("x"), QStringLiteral("y")});
        group->addSubProperty(number);
        group->addSubProperty(choice);
        browser->addProperty(group);
        sliderBrowser->addProperty(number);
        const QPointer<QSpinBox> spinBox = browser->findChild<QSpinBox*>();
        const QPointer<QSlider> slider = sliderBrowser->findChild<QSlider*>();
        const QPointer<QComboBox> comboBox = browser->findChild<QComboBox*>();
        ASSERT_TRUE(spinBox && slider && comboBox);
        const QVector<QObject*> pieces(
            {grid.numbers, grid.choices, grid.groups, grid.spinBoxes, grid.comboBoxes, browser, sliderBrowser});
        for (const int piece : qAsConst(order)) {
            delete pieces.at(piece);
            // Whatever is left still takes edits.
            if (spinBox)
                spinBox->stepUp();
            if (slider)
                slider->triggerAction(QAbstractSlider::SliderSingleStepAdd);
            if (comboBox)
                comboBox->setCurrentIndex(1 - comboBox->currentIndex());
        }
        delete grid.sliders;
        deliverDeferredDeletes();
        EXPECT_TRUE(spinBox.isNull());
        EXPECT_TRUE(slider.isNull());
        EXPECT_TRUE(comboBox.isNull());
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(QtPropertyBrowserTest, EditorMayBeDeletedByAnybody)
{
    QtProperty* property = numbers.addProperty(QStringLiteral("Width"));
    browser.addProperty(property);
    sliderBrowser.addProperty(property);
    delete browser.findChild<QSpinBox*>();

    numbers.setValue(property, 3);
    property->setPropertyName(QStringLiteral("Height"));
    EXPECT_EQ(sliderBrowser.findChild<QSlider*>()->value(), 3);
    delete property;
    deliverDeferredDeletes();
    EXPECT_TRUE(browser.findChildren<QWidget*>().isEmpty());
}

TEST_F(QtPropertyBrowserTest, DeletedBoxIsDoneWithout)
{
    QtProperty* group = groups.addProperty(QStringLiteral("Resolution"));
    QtProperty* width = numbers.addProperty(QStringLiteral("Width"));
    group->addSubProperty(width);
    QtProperty* height = numbers.addProperty(QStringLiteral("Height"));
    group->addSubProperty(height);
    browser.addProperty(group);
    delete browser.findChild<QGroupBox*>();
    group->setPropertyName(QStringLiteral("Mode"));
    group->removeSubProperty(height);
    group->removeSubProperty(width);
    group->addSubProperty(width);
    EXPECT_EQ(browser.findChildren<QSpinBox*>().size(), 1);
}

TEST_F(QtPropertyBrowserTest, PropertyMayBeDeletedFromTheSignalOfItsOwnEditor)
{
    QtProperty* property = numbers.addProperty();
    browser.addProperty(property);
    QObject::connect(&numbers, &QtIntPropertyManager::valueChanged, [](QtProperty* changed) { delete changed; });
    show(browser);

    QTest::keyClick(browser.findChild<QSpinBox*>(), Qt::Key_Up);
    deliverDeferredDeletes();

    EXPECT_TRUE(browser.findChildren<QSpinBox*>().isEmpty());
    EXPECT_TRUE(numbers.properties().isEmpty());
}

TEST_F(QtPropertyBrowserTest, FactoryTakesItsEditorsWithIt)
{
    auto factory = std::make_unique<QtSpinBoxFactory>();
    QtGroupBoxPropertyBrowser own;
    own.setFactoryForManager(&numbers, factory.get());
    QtProperty* property = numbers.addProperty();
    own.addProperty(property);
    const QPointer<QSpinBox> spinBox = own.findChild<QSpinBox*>();
    factory.reset();
    EXPECT_TRUE(spinBox.isNull());
    QtProperty* later = numbers.addProperty();
    own.addProperty(later);
    EXPECT_EQ(own.findChild<QSpinBox*>(), nullptr);
}

TEST_F(QtPropertyBrowserTest, EditorWithoutServedManagerIsNull)
{
    QtIntPropertyManager other;
    QtAbstractEditorFactoryBase& base = spinBoxes;
    EXPECT_EQ(base.createEditor(other.addProperty(), nullptr), nullptr);
    EXPECT_EQ(base.createEditor(nullptr, nullptr), nullptr);
}

} // namespace
