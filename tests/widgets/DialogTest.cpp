#include "TestSupport.h"

#include "ColorButton.h"
#include "ItemEditor.h"
#include "PreferenceDialog.h"

#include "PR_PrefItem.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {
// There is no window manager to do it.
void activate(QWidget *window)
{
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
}

// A dialog in a real window over definitions of all types.
class DialogTest : public HostTest {
protected:
    DialogTest()
    {
        define(
            category("<bool id='BOOL' value='false'/>"
                     "<int id='INT' value='3' min='1' max='40' shortDesc='Cells &amp; frames' longDesc='Held cells.'/>"
                     "<int id='INT_OUTSIDE' value='90' min='1' max='40'/>"
                     "<double id='DOUBLE' value='0.0000004'/>"
                     "<double id='SHARE' value='0.07' percentage='true'/>"
                     "<color id='COLOR' red='1' green='2' blue='3'/>"
                     "<string id='TEXT' value='abcdef' shortDesc='Words'/>"
                     "<shortcut id='KEY' value='Ctrl+S'/>"
                     "<font id='FONT' value='Arial'/>"
                     "<int id='LOCKED' value='1' min='0' max='9' facilityOverride='true'/>")
            + category("<int id='TL_HEIGHT' value='3' min='1' max='40' longDesc='A Track of cells'/>", "Timeline"));
    }

    void open(QString const &name = u"user.pref"_s)
    {
        dialog.reset();
        store.reset(); // one main store at a time
        store.reset(PR_Preference::createPreference(path(name)));
        takeReports(); // that there is no file yet
        dialog = std::make_unique<PreferenceDialog>(*store);
        dialog->show();
        activate(dialog.get());
    }

    // Lets the dialog show what has happened.
    static void settle() { QTest::qWait(1); }

    template <class Widget> Widget *field(char const *key) const
    {
        return dialog->findChild<Widget *>(QString::fromLatin1(key));
    }
    ItemEditor *editor(char const *key) const
    {
        return qobject_cast<ItemEditor *>(field<QWidget>(key)->parentWidget());
    }
    QString value(char const *key) const { return store->find(QString::fromLatin1(key))->valueAsString(); }
    QPushButton *button(char const *text, QWidget const *window = nullptr) const
    {
        for (auto *const candidate : (window ? window : dialog.get())->findChildren<QPushButton *>()) {
            if (candidate->text().remove(u'&') == QLatin1String(text))
                return candidate;
        }
        return nullptr;
    }
    bool isMarked(char const *key) const { return editor(key)->restoreButton()->isVisible(); }

    static void click(QWidget *widget)
    {
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }
    static void type(QWidget *widget, char const *text)
    {
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(widget, QString::fromLatin1(text));
    }
    // The keys of the lines on the screen.
    QStringList visibleKeys() const
    {
        QStringList keys;
        for (auto const *const line : dialog->findChildren<ItemEditor *>()) {
            if (line->isVisible())
                keys.append(line->key());
        }
        return keys;
    }

    std::unique_ptr<PR_Preference> store;
    std::unique_ptr<PreferenceDialog> dialog;
};

void typeNumber(QWidget *box, char const *text)
{
    QTest::mouseClick(box->findChild<QLineEdit *>(), Qt::LeftButton);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, QString::fromLatin1(text));
    QTest::keyClick(box, Qt::Key_Return);
}

void chooseColor(QWidget *button)
{
    QTest::mouseClick(button, Qt::LeftButton);
    auto *const chooser = button->findChild<QColorDialog *>();
    ASSERT_TRUE(chooser && QTest::qWaitForWindowExposed(chooser));
    EXPECT_TRUE(chooser->testOption(QColorDialog::ShowAlphaChannel));
    chooser->setCurrentColor(QColor(10, 20, 30, 40));
    QTest::mouseClick(chooser->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    activate(button->window());
}

void pressKey(QWidget *field, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    field->setFocus();
    QTest::keyClick(field, Qt::Key(key), modifiers);
}
} // namespace

TEST_F(DialogTest, EachTypeIsEditedAndSaved)
{
    open();
    struct {
        char const *key;
        void (*edit)(QWidget *);
        char const *value;
    } const rows[] = {
        { "BOOL", [](QWidget *box) { click(box); }, "Yes" },
        { "INT", [](QWidget *box) { typeNumber(box, "12"); }, "12" },
        { "INT", [](QWidget *box) { typeNumber(box, "999"); }, "9" }, // stops at the range
        { "DOUBLE", [](QWidget *box) { typeNumber(box, "2000.125"); }, "2000.125000" },
        { "SHARE", [](QWidget *box) { typeNumber(box, "25.5"); }, "0.255000" },
        { "COLOR", chooseColor, "( 10  20  30  40)" },
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_K, Qt::ControlModifier); }, "Ctrl+K" },
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_F5); }, "F5" }, // replaces the key before
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_Backspace); }, "" },
        { "FONT", [](QWidget *box) { pressKey(box, Qt::Key_Down); }, "courier" },
        { "TEXT", [](QWidget *edit) { type(edit, "xyz"), pressKey(edit, Qt::Key_Return); }, "xyz" },
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(std::string(row.key) + ' ' + row.value);
        row.edit(field<QWidget>(row.key));
        settle();
        EXPECT_EQ(value(row.key), QString::fromLatin1(row.value));
        EXPECT_TRUE(isMarked(row.key));
    }
    type(field<QWidget>("TEXT"), "not yet entered");
    QTest::keyClick(field<QWidget>("TEXT"), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());

    open();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 9);
    EXPECT_EQ(field<QLineEdit>("TEXT")->text(), u"not yet entered"_s);
    EXPECT_TRUE(isMarked("TEXT") && !isMarked("INT_OUTSIDE"));
}

TEST_F(DialogTest, LookingChangesNothing)
{
    open();
    SignalCounter changes(*store);
    auto *const list = field<QListWidget>("categories");
    for (int row = 0; row < list->count(); ++row) {
        list->setCurrentRow(row);
        settle();
        for (auto const *const line : dialog->findChildren<ItemEditor *>()) {
            line->field()->setFocus();
            if (auto *const box = qobject_cast<QAbstractSpinBox *>(line->field()))
                pressKey(box, Qt::Key_Return);
        }
    }
    // The wheel scrolls over a field that the user is not in.
    dialog->setFocus();
    auto *const box = field<QSpinBox>("TL_HEIGHT");
    QPoint const middle = box->rect().center();
    QWheelEvent turn(middle, box->mapToGlobal(middle), {}, QPoint(0, 120), {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(box, &turn);
    EXPECT_EQ(field<QSpinBox>("INT_OUTSIDE")->value(), 90);
    dialog->close();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(changes.take(), 0);
    EXPECT_FALSE(QFile::exists(path(u"user-pref.xml"_s)));
}

TEST_F(DialogTest, LockedItemsCannotBeEdited)
{
    open();
    auto *const box = field<QSpinBox>("LOCKED");
    typeNumber(box, "5");
    EXPECT_EQ(value("LOCKED"), u"1"_s);
    EXPECT_EQ(box->value(), 1);
    EXPECT_TRUE(editor("LOCKED")->toolTip().contains(u"Locked"_s));

    // A lock that comes while the dialog is open: the field goes back.
    store->find(u"INT"_s)->setFacilityOverride();
    typeNumber(field<QSpinBox>("INT"), "5");
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 3);
    EXPECT_EQ(takeReports().size(), 1U);
}

TEST_F(DialogTest, SearchesKeysAndTexts)
{
    open();
    std::pair<char const *, QStringList> const rows[] = {
        { "tl_hei", { u"TL_HEIGHT"_s } }, // part of a key
        { "words", { u"TEXT"_s } }, // of a label
        { "cells", { u"INT"_s } }, // of a long text, with the first of two categories shown
        { "cells track", { u"TL_HEIGHT"_s } }, // each word somewhere
        { "cells words", {} },
    };
    for (auto const &[text, keys] : rows) {
        type(field<QWidget>("search"), text);
        EXPECT_EQ(visibleKeys(), keys) << text;
    }
    pressKey(field<QWidget>("search"), Qt::Key_A, Qt::ControlModifier);
    pressKey(field<QWidget>("search"), Qt::Key_Backspace);
    EXPECT_EQ(visibleKeys().size(), 10);
}

TEST_F(DialogTest, RestoresOneAndAll)
{
    writeFile(u"user-pref.xml"_s,
        "<preferences><int id='INT' value='7'/><bool id='BOOL' value='Y'/><int id='TL_HEIGHT' value='9'/>"
        "<int id='UNKNOWN' value='5'/></preferences>");
    open();
    click(editor("INT")->restoreButton());
    settle();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 3);
    EXPECT_TRUE(!isMarked("INT") && isMarked("BOOL"));

    for (char const *answer : { "Cancel", "Restore" }) {
        EXPECT_EQ(value("BOOL"), u"Yes"_s);
        click(button("Restore All Defaults..."));
        auto *const question = dialog->findChild<QMessageBox *>();
        ASSERT_TRUE(question && QTest::qWaitForWindowExposed(question));
        click(button(answer, question));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        settle();
    }
    EXPECT_EQ(value("BOOL"), u"No"_s);
    EXPECT_EQ(value("TL_HEIGHT"), u"3"_s);
    EXPECT_EQ(value("UNKNOWN"), u"5"_s); // without a definition there is nothing to go back to
    EXPECT_FALSE(field<QCheckBox>("BOOL")->isChecked() || isMarked("BOOL"));
}

TEST_F(DialogTest, ShowsChangesFromOutside)
{
    open();
    auto *const text = field<QLineEdit>("TEXT");
    type(text, "half");
    store->setIntValue(u"INT"_s, 8);
    store->setRgbaValue(u"COLOR"_s, 0x80FF0000);
    store->setStringValue(u"TEXT"_s, u"outside"_s);
    settle();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 8);
    EXPECT_TRUE(isMarked("INT") && !isMarked("BOOL"));
    EXPECT_EQ(field<ColorButton>("COLOR")->color(), QColor(255, 0, 0, 128));
    EXPECT_EQ(text->text(), u"half"_s); // what is half typed stays, and counts when it is done
    pressKey(text, Qt::Key_Return);
    EXPECT_EQ(value("TEXT"), u"half"_s);

    // Other code may load the store again: all items are new, some may be gone or of another type.
    define(category("<string id='INT' value='x'/><string id='TEXT' value='new'/>"));
    store->load();
    store->emitPreferenceChanged();
    settle();
    takeReports();
    EXPECT_EQ(text->text(), u"new"_s);
    EXPECT_FALSE(field<QSpinBox>("INT")->isEnabled() || field<QWidget>("BOOL")->isEnabled());
    type(text, "newer");
    dialog->close();
    EXPECT_EQ(value("TEXT"), u"newer"_s);
}

TEST_F(DialogTest, ShowsWhatAnotherProgramSavedWhenItBecomesActive)
{
    open();
    store->setShared(true);
    store->setIntValue(u"TL_HEIGHT"_s, 9);
    TestStore other(path(u"user.pref"_s));
    takeReports();
    other.setIntValue(u"INT"_s, 12);
    other.save();
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(dialog.get(), &activation);
    settle();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 12);
    dialog->close();
    EXPECT_EQ(TestStore(path(u"user.pref"_s)).getInt(u"INT"_s), 12);
    EXPECT_EQ(TestStore(path(u"user.pref"_s)).getInt(u"TL_HEIGHT"_s), 9);
}

TEST_F(DialogTest, OffersAFieldForEachShippedPreference)
{
    host.installFolder.clear(); // the shipped definitions
    open();
    auto *const list = field<QListWidget>("categories");
    for (int row = 0; row < list->count(); ++row)
        list->setCurrentRow(row);
    auto const lines = dialog->findChildren<ItemEditor *>();
    EXPECT_EQ(lines.size(), std::distance(store->begin(), store->end()));
    for (auto const *const line : lines)
        EXPECT_FALSE(qobject_cast<QLabel *>(line->field())) << line->key(); // what stands for an unknown type
}

TEST_F(DialogTest, TellsOfAFailedSave)
{
    writeFile(u"file"_s, "where the folder should be");
    open(u"file/user.pref"_s);
    auto const *const error = field<QWidget>("error");
    click(field<QCheckBox>("BOOL"));
    testing::internal::CaptureStderr(); // the library says it there, too
    click(button("Close"));
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(takeReports().size(), 1U);
    EXPECT_TRUE(dialog->isVisible() && error->isVisible());
    QString told;
    for (auto const *const label : error->findChildren<QLabel *>())
        told += label->text();
    EXPECT_TRUE(told.contains(path(u"file/user-pref.xml"_s)) && told.contains(store->saveStatus().reason)) << told;
    click(button("Close Without Saving"));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(value("BOOL"), u"Yes"_s); // stays in effect

    QFile::remove(path(u"file"_s));
    dialog->show();
    click(button("Close"));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(readFile(u"file/user-pref.xml"_s).contains("BOOL"));
}
