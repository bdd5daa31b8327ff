#include "TestSupport.h"

#include "ColorButton.h"
#include "ElidedLabel.h"
#include "ItemEditor.h"
#include "KeyFrameItem.h"
#include "NumberBox.h"
#include "PreferenceDialog.h"
#include "ShortcutEdit.h"

#include "PR_PrefItem.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

#include <optional>

using namespace Qt::StringLiterals;

namespace {
// There is no window manager to do it.
void activate(QWidget *window)
{
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
}

// A dialog in a real window over definitions of all types. "Changes" are the notices of the store.
class DialogTest : public HostTest {
protected:
    DialogTest()
    {
        KeyFrameItem::registerType();
        define(
            category("<bool id='BOOL' value='false' shortDesc='Switch'/>"
                     "<int id='INT' value='3' min='1' max='40' shortDesc='Cells &amp; frames' longDesc='Held cells.'/>"
                     "<int id='INT_OUTSIDE' value='90' min='1' max='40'/>"
                     "<double id='DOUBLE' value='0.0000004'/>"
                     "<double id='SHARE' value='0.07' percentage='true'/>"
                     "<color id='COLOR' red='1' green='2' blue='3'/>"
                     "<string id='TEXT' value='abcdef' shortDesc='Words'/>"
                     "<shortcut id='KEY' value='Ctrl+S'/>"
                     "<font id='FONT' value='Arial'/>"
                     "<keyFrame id='FRAME' value='constant'/>"
                     "<int id='LOCKED' value='1' min='0' max='9' facilityOverride='true'/>")
            + category("<int id='TL_HEIGHT' value='3' min='1' max='40' longDesc='A Track of cells'/>"
                       "<bool id='TL_TRACK' value='true'/>",
                "Timeline"));
    }

    void open(QString const &name = u"user.pref"_s)
    {
        store.reset(); // one main store at a time
        store.reset(PR_Preference::createPreference(path(name)));
        takeReports(); // that there is no file yet
        changes.emplace(*store);
        openDialog();
    }

    void openDialog()
    {
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
    // The three signs that a preference is changed agree.
    bool isMarked(char const *key) const
    {
        ItemEditor const *const line = editor(key);
        bool const bold = line->findChild<ElidedLabel *>()->font().bold();
        EXPECT_EQ(line->restoreButton()->isVisible(), bold) << key;
        EXPECT_EQ(line->toolTip().contains(u"Changed by you"_s), bold) << key;
        return bold;
    }

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
    void search(char const *text) const { type(field<QWidget>("search"), text); }
    // What is left of the list of categories.
    QStringList categories() const
    {
        QStringList texts;
        auto const *const list = field<QListWidget>("categories");
        for (int row = 0; row < list->count(); ++row) {
            if (!list->item(row)->isHidden())
                texts.append(list->item(row)->text());
        }
        return texts;
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
    std::optional<SignalCounter> changes;
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

TEST_F(DialogTest, EachTypeIsEdited)
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
        { "TEXT", [](QWidget *edit) { type(edit, "xyz"), pressKey(edit, Qt::Key_Tab); }, "xyz" },
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_K, Qt::ControlModifier); }, "Ctrl+K" },
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_F5); }, "F5" }, // replaces the key before
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_Backspace); }, "" },
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_F7); }, "F7" },
        { "KEY", [](QWidget *edit) { click(edit->findChild<QToolButton *>()); }, "" },
        { "FONT", [](QWidget *box) { pressKey(box, Qt::Key_Down); }, "courier" },
        { "FRAME", [](QWidget *box) { pressKey(box, Qt::Key_B); }, "bezier" },
    };
    QStringList edited;
    for (auto const &row : rows) {
        SCOPED_TRACE(std::string(row.key) + ' ' + row.value);
        QString const key = QString::fromLatin1(row.key);
        EXPECT_EQ(isMarked(row.key), edited.contains(key));
        row.edit(field<QWidget>(row.key));
        settle();
        EXPECT_EQ(value(row.key), QString::fromLatin1(row.value));
        EXPECT_TRUE(isMarked(row.key));
        EXPECT_EQ(changes->take(), 1); // what is shown afterwards must not count as entered
        edited.append(key);
    }
    // Enter and Tab belong to the fields: no button was pressed.
    EXPECT_TRUE(dialog->isVisible() && !dialog->findChild<QMessageBox *>());

    // A modifier on its way to a shortcut, and leaving again, change nothing.
    auto *const shortcut = field<ShortcutEdit>("KEY");
    shortcut->setFocus();
    QTest::keyPress(shortcut, Qt::Key_Control);
    QTest::keyRelease(shortcut, Qt::Key_Control);
    dialog->setFocus();
    settle();
    EXPECT_EQ(shortcut->keySequence(), QKeySequence());
    EXPECT_EQ(changes->take(), 0);
}

TEST_F(DialogTest, LockedItemsCannotBeEdited)
{
    open();
    auto *const box = field<QSpinBox>("LOCKED");
    typeNumber(box, "5");
    pressKey(box, Qt::Key_Up);
    EXPECT_EQ(value("LOCKED"), u"1"_s);
    EXPECT_EQ(box->value(), 1);
    EXPECT_TRUE(editor("LOCKED")->toolTip().contains(u"Locked"_s));
    EXPECT_FALSE(editor("LOCKED")->findChild<QLabel *>()->pixmap().isNull());
    EXPECT_FALSE(isMarked("LOCKED"));

    // A lock that comes while the dialog is open and has not seen it: refused, and the field goes back.
    store->find(u"INT"_s)->setFacilityOverride();
    typeNumber(field<QSpinBox>("INT"), "5");
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 3);
    EXPECT_EQ(takeReports().size(), 1U);
    EXPECT_FALSE(field<QSpinBox>("INT")->isEnabled());
}

TEST_F(DialogTest, SearchesKeysAndTexts)
{
    open();
    struct {
        char const *text;
        QStringList categories, keys;
    } const rows[] = {
        { "tl_hei", { u"Timeline (1)"_s }, { u"TL_HEIGHT"_s } }, // part of a key
        { "words", { u"General (1)"_s }, { u"TEXT"_s } }, // of a label
        { "cells", { u"General (1)"_s, u"Timeline (1)"_s }, { u"INT"_s } }, // of a long text
        { "cells track", { u"Timeline (1)"_s }, { u"TL_HEIGHT"_s } }, // each word somewhere
        { "cells words", {}, {} },
    };
    field<QLineEdit>("search")->setText(u"tl_track"_s); // the page that it leads to is not made yet
    EXPECT_EQ(visibleKeys(), QStringList{ u"TL_TRACK"_s });
    for (auto const &row : rows) {
        search(row.text);
        EXPECT_EQ(categories(), row.categories) << row.text;
        EXPECT_EQ(visibleKeys(), row.keys) << row.text;
    }
    search("");
    pressKey(field<QWidget>("search"), Qt::Key_Backspace);
    EXPECT_EQ(categories(), (QStringList{ u"General"_s, u"Timeline"_s }));
    EXPECT_EQ(visibleKeys().size(), 11);
}

TEST_F(DialogTest, RestoresOneAndAll)
{
    writeFile(u"user-pref.xml"_s,
        "<preferences><int id='INT' value='7'/><bool id='BOOL' value='Y'/><int id='TL_HEIGHT' value='9'/>"
        "<int id='UNKNOWN' value='5'/></preferences>");
    open();
    EXPECT_TRUE(isMarked("INT") && isMarked("BOOL"));
    click(editor("INT")->restoreButton());
    settle();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 3);
    EXPECT_TRUE(!isMarked("INT") && isMarked("BOOL"));
    EXPECT_EQ(dialog->focusWidget(), field<QWidget>("INT"));

    click(button("Restore All Defaults..."));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog->findChild<QMessageBox *>()));
    EXPECT_TRUE(dialog->findChild<QMessageBox *>()->text().contains(u" 2 "_s));
    click(button("Restore", dialog->findChild<QMessageBox *>()));
    settle();
    EXPECT_EQ(value("BOOL"), u"No"_s);
    EXPECT_EQ(value("TL_HEIGHT"), u"3"_s);
    EXPECT_EQ(value("UNKNOWN"), u"5"_s); // without a definition there is nothing to go back to
    EXPECT_FALSE(field<QCheckBox>("BOOL")->isChecked() || isMarked("BOOL"));
}

TEST_F(DialogTest, ShowsChangesFromOutside)
{
    open();
    auto *const text = field<QLineEdit>("TEXT");
    text->setFocus();
    text->setCursorPosition(2);
    store->setIntValue(u"INT"_s, 8);
    store->setStringValue(u"TEXT"_s, u"ABCDEF"_s);
    store->setRgbaValue(u"COLOR"_s, 0x80FF0000);
    store->setEnumValue(u"FRAME"_s, 1);
    store->setIntValue(u"LOCKED"_s, 2);
    EXPECT_EQ(takeReports().size(), 1U); // the lock
    settle();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 8);
    EXPECT_EQ(text->text(), u"ABCDEF"_s);
    EXPECT_EQ(field<ColorButton>("COLOR")->color(), QColor(255, 0, 0, 128));
    EXPECT_EQ(field<QComboBox>("FRAME")->currentText(), u"Linear"_s);
    EXPECT_TRUE(isMarked("INT") && isMarked("TEXT") && !isMarked("BOOL"));
    EXPECT_EQ(dialog->focusWidget(), text);
    EXPECT_EQ(text->cursorPosition(), 2);
    EXPECT_EQ(changes->take(), 4);
}

TEST_F(DialogTest, ClosingSavesAndTheNextDialogShowsIt)
{
    open();
    typeNumber(field<QSpinBox>("INT"), "12");
    type(field<QWidget>("TEXT"), "not yet entered");
    QTest::keyClick(field<QWidget>("TEXT"), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    dialog.reset();

    open();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 12);
    EXPECT_EQ(field<QLineEdit>("TEXT")->text(), u"not yet entered"_s);
    EXPECT_TRUE(isMarked("INT") && isMarked("TEXT") && !isMarked("BOOL"));
}

TEST_F(DialogTest, TellsOfAFailedSave)
{
    writeFile(u"file"_s, "where the folder should be");
    open(u"file/user.pref"_s);
    auto const *const error = field<QFrame>("error");
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

    pressKey(field<QSpinBox>("INT"), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible()); // no button takes the key
    QFile::remove(path(u"file"_s));
    click(button("Close"));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(readFile(u"file/user-pref.xml"_s).contains("BOOL"));
}
