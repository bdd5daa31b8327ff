#include "TestSupport.h"

#include "PR_PrefItem.h"
#include "PR_PreferenceDialog.h"
#include "PR_ReportCollector.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFrame>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QTranslator>
#include <QUndoStack>
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
            category(
                "<bool id='BOOL' value='false' group='Basics'/>"
                "<int id='INT' value='3' min='1' max='40' unit='cells' group='Basics' shortDesc='Cells &amp; frames' "
                "longDesc='Held cells.'/>"
                "<int id='INT_OUTSIDE' value='90' min='1' max='40'/>"
                "<int id='NAMED' value='0' min='0' max='2' choices='0=Never; 1=When asked; 2=Always'/>"
                "<double id='DOUBLE' value='0.0000004'/>"
                "<double id='LIMITED' value='2' min='0.5' max='8'/>"
                "<double id='SHARE' value='0.07' percentage='true'/>"
                "<color id='COLOR' red='1' green='2' blue='3'/>"
                "<string id='TEXT' value='abcdef' shortDesc='Words'/>"
                "<string id='CACHE_FOLDER' value=''/>"
                "<string id='PREFERENCE_SET' value=''/>"
                "<shortcut id='KEY' value='Ctrl+S' shortDesc='Save'/>"
                "<shortcut id='UNDO' value='Ctrl+Z' shortDesc='Undo'/>"
                "<shortcut id='OPEN' value='Ctrl+O' shortDesc='Open' facilityOverride='true'/>"
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
        dialog = std::make_unique<PR_PreferenceDialog>(*store);
        dialog->show();
        activate(dialog.get());
    }

    // Lets the dialog show what has happened.
    static void settle() { QTest::qWait(1); }

    template <class Widget> Widget *field(char const *key) const
    {
        return dialog->findChild<Widget *>(QString::fromLatin1(key));
    }
    QWidget *row(char const *key) const { return dialog->findChild<QWidget *>("row "_L1 + QLatin1String(key)); }
    QToolButton *state(char const *key) const
    {
        return row(key)->findChild<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
    }
    QString value(char const *key) const { return store->find(QString::fromLatin1(key))->valueAsString(); }
    QPushButton *button(QString const &text, QWidget const *window = nullptr) const
    {
        for (auto *const candidate : (window ? window : dialog.get())->findChildren<QPushButton *>()) {
            if (QString(candidate->text()).remove(u'&') == text && candidate->isVisible())
                return candidate;
        }
        return nullptr;
    }
    bool isMarked(char const *key) const { return state(key)->isVisible(); }
    QString explanation() const { return field<QLabel>("explanation")->text(); }
    void show(char const *key) const { ASSERT_TRUE(dialog->showPreference(QString::fromLatin1(key))); }

    static void click(QWidget *widget)
    {
        ASSERT_TRUE(widget);
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }
    static void type(QWidget *widget, char const *text)
    {
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(widget, QString::fromLatin1(text));
    }
    // The keys of the rows on the screen.
    QStringList visibleKeys() const
    {
        QStringList keys;
        for (auto const *const line : dialog->findChildren<QWidget *>(QRegularExpression(u"^row "_s))) {
            if (line->isVisible())
                keys.append(line->objectName().mid(4));
        }
        return keys;
    }
    // What is on the screen but not whole.
    QStringList cutWidgets() const
    {
        QStringList cut;
        for (QString const &key : visibleKeys()) {
            QWidget const *const shown = dialog->findChild<QWidget *>(key);
            int const end = shown->mapTo(dialog.get(), QPoint(shown->width(), 0)).x();
            if (shown->width() < qMin(shown->minimumSizeHint().width(), 300) || end > dialog->width())
                cut.append(key);
        }
        for (auto const *const label : dialog->findChildren<QLabel *>()) {
            if (!label->isVisible() || !label->buddy())
                continue;
            bool const isWhole = label->wordWrap() ? label->height() >= label->heightForWidth(label->width())
                                                   : label->width() >= label->sizeHint().width();
            if (!isWhole)
                cut.append(label->text());
        }
        return cut;
    }
    QStringList pages() const
    {
        QStringList names;
        auto *const list = field<QListWidget>("pages");
        for (int i = 0; i < list->count(); ++i)
            names.append(list->item(i)->text());
        return names;
    }

    std::unique_ptr<PR_Preference> store;
    std::unique_ptr<PR_PreferenceDialog> dialog;
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
    define({}, u"preferenceSets/norvelle/classroom.xml"_s);
    open();
    struct {
        char const *key;
        void (*edit)(QWidget *);
        char const *value;
    } const rows[] = {
        { "BOOL", [](QWidget *box) { click(box); }, "Yes" },
        { "INT", [](QWidget *box) { typeNumber(box, "12"); }, "12" },
        { "INT", [](QWidget *box) { typeNumber(box, "999"); }, "9" }, // stops at the range
        { "NAMED", [](QWidget *box) { pressKey(box, Qt::Key_A); }, "2" }, // "Always"
        { "DOUBLE", [](QWidget *box) { typeNumber(box, "2000.125"); }, "2000.125000" },
        { "LIMITED", [](QWidget *box) { typeNumber(box, "7.5"); }, "7.500000" },
        { "SHARE", [](QWidget *box) { typeNumber(box, "25.5"); }, "0.255000" },
        { "COLOR", chooseColor, "( 10  20  30  40)" },
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_K, Qt::ControlModifier); }, "Ctrl+K" },
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_F5); }, "F5" }, // replaces the key before
        { "KEY", [](QWidget *edit) { pressKey(edit, Qt::Key_Backspace); }, "" },
        { "FONT", [](QWidget *box) { pressKey(box, Qt::Key_Down); }, "courier" },
        { "TEXT", [](QWidget *edit) { type(edit, "xyz"), pressKey(edit, Qt::Key_Return); }, "xyz" },
        { "CACHE_FOLDER",
            [](QWidget *edit) { type(edit->focusProxy(), "/tmp"), pressKey(edit->focusProxy(), Qt::Key_Return); },
            "/tmp" },
        { "PREFERENCE_SET", [](QWidget *box) { pressKey(box, Qt::Key_Down); }, "classroom" },
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(std::string(row.key) + ' ' + row.value);
        show(row.key);
        row.edit(field<QWidget>(row.key));
        settle();
        EXPECT_EQ(value(row.key), QString::fromLatin1(row.value));
        EXPECT_TRUE(isMarked(row.key));
    }
    show("TEXT");
    type(field<QWidget>("TEXT"), "not yet entered");
    QTest::keyClick(field<QWidget>("TEXT"), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());

    open();
    EXPECT_EQ(field<QSpinBox>("INT")->text(), u"9 cells"_s);
    EXPECT_EQ(field<QComboBox>("NAMED")->currentText(), u"Always"_s);
    EXPECT_EQ(field<QLineEdit>("TEXT")->text(), u"not yet entered"_s);
    EXPECT_TRUE(isMarked("TEXT") && !isMarked("INT_OUTSIDE"));
    show("CACHE_FOLDER");
    click(button(u"Browse..."_s, row("CACHE_FOLDER")));
    auto *const chooser = dialog->findChild<QFileDialog *>();
    ASSERT_TRUE(chooser);
    Q_EMIT chooser->fileSelected(path(QString()));
    EXPECT_EQ(value("CACHE_FOLDER"), path(QString()));
}

TEST_F(DialogTest, LookingChangesNothing)
{
    open();
    SignalCounter changes(*store);
    auto *const list = field<QListWidget>("pages");
    for (int page = 0; page < list->count(); ++page) {
        list->setCurrentRow(page);
        settle();
        for (QString const &key : visibleKeys()) {
            auto *const each = dialog->findChild<QWidget *>(key);
            each->setFocus();
            if (auto *const box = qobject_cast<QAbstractSpinBox *>(each))
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
    show("LOCKED"); // puts the focus on the lock
    typeNumber(field<QSpinBox>("LOCKED"), "5");
    EXPECT_EQ(value("LOCKED"), u"1"_s);
    EXPECT_EQ(field<QSpinBox>("LOCKED")->value(), 1);
    EXPECT_TRUE(explanation().contains(u"Locked by the facility"_s)) << explanation();

    // A lock that comes while the dialog is open: the field goes back.
    store->find(u"INT"_s)->setFacilityOverride();
    typeNumber(field<QSpinBox>("INT"), "5");
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 3);
    EXPECT_EQ(takeReports().size(), 1U);
}

TEST_F(DialogTest, OneSearchOverAllPages)
{
    open();
    EXPECT_EQ(pages(), (QStringList{ u"General"_s, u"Timeline"_s, u"Shortcuts"_s }));
    store->setIntValue(u"INT"_s, 8);
    settle();
    std::pair<char const *, QStringList> const rows[] = {
        { "tl_hei", { u"TL_HEIGHT"_s } }, // part of a key
        { "words", { u"TEXT"_s } }, // of a label
        { "cells", { u"INT"_s, u"TL_HEIGHT"_s } }, // of a long text, on two pages
        { "cells track", { u"TL_HEIGHT"_s } }, // each word somewhere
        { "ctrl+z", { u"UNDO"_s } }, // a value
        { "8 cells", { u"INT"_s } },
        { "cells words", {} },
    };
    for (auto const &[text, keys] : rows) {
        type(field<QWidget>("search"), text);
        EXPECT_EQ(visibleKeys(), keys) << text;
    }
    type(field<QWidget>("search"), "held");
    EXPECT_TRUE(row("INT")->isVisible());
    bool isHighlighted = false;
    for (auto const *const label : dialog->findChildren<QLabel *>())
        isHighlighted = isHighlighted || (label->isVisible() && label->text().contains(u">Held</span> cells"_s));
    EXPECT_TRUE(isHighlighted);
    field<QLineEdit>("search")->clear();
    click(field<QCheckBox>("changed"));
    EXPECT_EQ(visibleKeys(), QStringList{ u"INT"_s });
    click(field<QCheckBox>("changed"));
    click(field<QCheckBox>("locked"));
    EXPECT_EQ(visibleKeys(), (QStringList{ u"OPEN"_s, u"LOCKED"_s }));
    click(field<QCheckBox>("locked"));
    EXPECT_EQ(visibleKeys().size(), 16);
}

TEST_F(DialogTest, TellsWhereAValueComesFrom)
{
    define(category("<double id='SHARE' value='0.5' percentage='true'/>"), u"preferenceSets/norvelle/classroom.xml"_s);
    writeFile(u"user-pref.xml"_s, "<preferences><string id='PREFERENCE_SET' value='classroom'/></preferences>");
    open();
    show("INT");
    EXPECT_TRUE(explanation().contains(u"Held cells."_s) && explanation().contains(u"The default is 3 cells."_s))
        << explanation();
    typeNumber(field<QSpinBox>("INT"), "4");
    settle();
    EXPECT_TRUE(explanation().contains(u"Changed by you. The default is 3 cells."_s)) << explanation();
    EXPECT_TRUE(field<QWidget>("INT")->accessibleDescription().contains(u"Held cells.\nChanged by you."_s));
    show("SHARE");
    EXPECT_TRUE(explanation().contains(u"The default of the set classroom is 50 %."_s)) << explanation();
}

TEST_F(DialogTest, RestoresOneAndAllAndUndoesIt)
{
    writeFile(u"user-pref.xml"_s,
        "<preferences><int id='INT' value='7'/><bool id='BOOL' value='Y'/><int id='TL_HEIGHT' value='9'/>"
        "<int id='UNKNOWN' value='5'/></preferences>");
    open();
    show("INT");
    click(state("INT"));
    settle();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 3);
    EXPECT_TRUE(!isMarked("INT") && isMarked("BOOL"));

    for (char const *answer : { "Cancel", "Restore" }) {
        EXPECT_EQ(value("BOOL"), u"Yes"_s);
        click(button(u"Restore All..."_s));
        auto *const question = dialog->findChild<QMessageBox *>();
        ASSERT_TRUE(question && QTest::qWaitForWindowExposed(question));
        click(button(QString::fromLatin1(answer), question));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        settle();
    }
    EXPECT_EQ(value("BOOL"), u"No"_s);
    EXPECT_EQ(value("TL_HEIGHT"), u"3"_s);
    EXPECT_EQ(value("UNKNOWN"), u"5"_s); // without a definition there is nothing to go back to
    EXPECT_FALSE(field<QCheckBox>("BOOL")->isChecked() || isMarked("BOOL"));

    // Undone over several pages: what is undone is shown.
    activate(dialog.get());
    show("TL_HEIGHT");
    typeNumber(field<QSpinBox>("TL_HEIGHT"), "20");
    show("INT");
    typeNumber(field<QSpinBox>("INT"), "21");
    QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(value("INT"), u"3"_s);
    QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(value("TL_HEIGHT"), u"3"_s);
    EXPECT_EQ(visibleKeys(), QStringList{ u"TL_HEIGHT"_s });
    QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::ControlModifier); // of all at once
    EXPECT_EQ(value("BOOL") + value("TL_HEIGHT"), u"Yes9"_s);
    QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(value("INT"), u"7"_s);
    EXPECT_FALSE(dialog->undoStack()->canUndo());
    while (dialog->undoStack()->canRedo())
        QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(value("INT") + value("TL_HEIGHT"), u"2120"_s);
    dialog->undoStack()->undo();
    for (int i = 0; i < 5; ++i) // what is held down is one step
        QTest::keyClick(field<QWidget>("INT"), Qt::Key_Up);
    EXPECT_EQ(value("INT"), u"8"_s);
    dialog->undoStack()->undo();
    EXPECT_EQ(value("INT"), u"3"_s);
    dialog->close();
    EXPECT_FALSE(readFile(u"user-pref.xml"_s).contains("\"INT\"")) << "a default is not saved";
}

TEST_F(DialogTest, ShortcutsThatAreTakenAreShownAtOnce)
{
    writeFile(u"user-pref.xml"_s, "<preferences><shortcut id='UNDO' value='F7'/></preferences>");
    open();
    dialog->showShortcuts();
    EXPECT_EQ(visibleKeys(), (QStringList{ u"KEY"_s, u"UNDO"_s, u"OPEN"_s }));
    auto *const edit = field<QKeySequenceEdit>("KEY");
    auto const pressTaken = [&] { pressKey(edit, Qt::Key_F7); };
    pressTaken();
    EXPECT_EQ(value("KEY"), u"Ctrl+S"_s);
    click(button(u"Cancel"_s, row("KEY")));
    settle();
    EXPECT_EQ(value("KEY") + value("UNDO"), u"Ctrl+SF7"_s);
    pressTaken();
    QTest::keyClick(row("KEY")->window()->focusWidget(), Qt::Key_Escape); // as Cancel; the window stays
    settle();
    EXPECT_TRUE(dialog->isVisible() && edit->hasFocus() && !button(u"Cancel"_s, row("KEY")));
    pressTaken();
    click(button(u"Take It From Undo"_s, row("KEY")));
    settle();
    EXPECT_EQ(value("KEY"), u"F7"_s);
    EXPECT_EQ(value("UNDO"), u""_s);
    dialog->undoStack()->undo();
    EXPECT_EQ(value("KEY") + value("UNDO"), u"Ctrl+SF7"_s);

    pressKey(edit, Qt::Key_O, Qt::ControlModifier); // that of a locked one cannot be taken
    EXPECT_FALSE(button(u"Take It From Open"_s, row("KEY")));
    pressKey(edit, Qt::Key_B); // a letter
    EXPECT_EQ(value("KEY"), u"Ctrl+S"_s);
    click(button(u"Use B"_s, row("KEY")));
    settle();
    EXPECT_EQ(value("KEY"), u"B"_s);
    QKeyEvent nameless(QEvent::KeyPress, Qt::Key_Dead_Circumflex, Qt::ControlModifier);
    QApplication::sendEvent(edit, &nameless); // no file could hold it
    EXPECT_EQ(value("KEY"), u"B"_s);
    pressKey(edit, Qt::Key_Escape);
    EXPECT_TRUE(dialog->isVisible() && !edit->hasFocus());
    EXPECT_EQ(value("KEY"), u"B"_s);

    auto *const filter = field<QKeySequenceEdit>("pressed");
    pressKey(filter, Qt::Key_F7);
    EXPECT_EQ(visibleKeys(), QStringList{ u"UNDO"_s });
    pressKey(filter, Qt::Key_Backspace);
    EXPECT_EQ(visibleKeys().size(), 3);

    // One that is there already is marked, and told.
    dialog.reset();
    writeFile(u"user-pref.xml"_s, "<preferences><shortcut id='UNDO' value='Ctrl+S'/></preferences>");
    open();
    show("KEY");
    EXPECT_TRUE(isMarked("KEY") && isMarked("UNDO"));
    EXPECT_TRUE(explanation().contains(u"Ctrl+S is the shortcut of Undo too."_s)) << explanation();
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
    EXPECT_EQ(field<QPushButton>("COLOR")->text().trimmed(), u"#80ff0000"_s);
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
    dialog->undoStack()->undo(); // of a text that is there still
    type(text, "newer");
    dialog->close();
    EXPECT_EQ(value("TEXT"), u"newer"_s);
    dialog->show();
    activate(dialog.get());
    type(text, "half typed");
    dialog.reset();
    EXPECT_EQ(value("TEXT"), u"half typed"_s);
    EXPECT_TRUE(readFile(u"user-pref.xml"_s).contains("half typed"));
}

TEST_F(DialogTest, SavesByItselfAndMergesWithOthers)
{
    open();
    store->setShared(true);
    show("TL_HEIGHT");
    typeNumber(field<QSpinBox>("TL_HEIGHT"), "9");
    EXPECT_FALSE(QFile::exists(path(u"user-pref.xml"_s)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(path(u"user-pref.xml"_s)); }));
    TestStore other(path(u"user.pref"_s));
    takeReports();
    other.setIntValue(u"INT"_s, 12);
    other.save();
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(dialog.get(), &activation);
    settle();
    EXPECT_EQ(field<QSpinBox>("INT")->value(), 12);
    dialog->setSaving(false);
    show("BOOL");
    click(field<QWidget>("BOOL"));
    dialog->close();
    EXPECT_EQ(value("BOOL"), u"Yes"_s);
    EXPECT_EQ(TestStore(path(u"user.pref"_s)).getInt(u"INT"_s), 12);
    EXPECT_EQ(TestStore(path(u"user.pref"_s)).getInt(u"TL_HEIGHT"_s), 9);
    EXPECT_FALSE(TestStore(path(u"user.pref"_s)).getBool(u"BOOL"_s)) << "left to the host";
}

TEST_F(DialogTest, OffersAFieldForEachShippedPreference)
{
    host.installFolder.clear(); // the shipped definitions
    for (bool const isPanovia : { false, true }) {
        host.hasPanoviaPreferenceUI = isPanovia;
        open();
        auto const rows = dialog->findChildren<QWidget *>(QRegularExpression(u"^row "_s));
        EXPECT_EQ(rows.size(), std::distance(store->begin(), store->end()));
        for (auto const *const each : rows) {
            QWidget const *const shown = dialog->findChild<QWidget *>(each->objectName().mid(4));
            EXPECT_FALSE(qobject_cast<QLabel const *>(shown)) << each->objectName(); // stands for an unknown type
            EXPECT_FALSE(shown->property("conflict").toBool()) << each->objectName();
        }
    }
}

TEST_F(DialogTest, ShowsReportsADamagedFileFirst)
{
    PR_ReportCollector const collector;
    writeFile(u"user-pref.xml"_s, "damaged");
    QFile::remove(path(u"install/resources/prefs_override.xml"_s));
    store.reset(PR_Preference::createPreference(path(u"user.pref"_s)));
    dialog = std::make_unique<PR_PreferenceDialog>(*store);
    dialog->show();
    activate(dialog.get());
    EXPECT_FALSE(takeReports().empty()) << "the host hears them as well";
    auto const *const text = field<QLabel>("reportText");
    EXPECT_TRUE(text->isVisible());
    EXPECT_TRUE(text->text().startsWith(u"Preference file %1 is empty or corrupted."_s.arg(store->getPathXml())))
        << text->text();
    click(button(u"Dismiss"_s));
    EXPECT_FALSE(field<QWidget>("reports")->isVisible());
}

TEST_F(DialogTest, TellsOfAFailedSave)
{
    writeFile(u"file"_s, "where the folder should be");
    open(u"file/user.pref"_s);
    auto const *const reports = field<QWidget>("reports");
    click(field<QCheckBox>("BOOL"));
    testing::internal::CaptureStderr(); // the library says it there, too
    click(button(u"Close"_s));
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(takeReports().size(), 1U);
    EXPECT_TRUE(dialog->isVisible() && reports->isVisible());
    QString const told = field<QLabel>("reportText")->text();
    EXPECT_TRUE(told.contains(path(u"file/user-pref.xml"_s)) && told.contains(store->saveStatus().reason)) << told;
    click(button(u"Close Without Saving"_s));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(value("BOOL"), u"Yes"_s); // stays in effect

    QFile::remove(path(u"file"_s));
    dialog->show();
    click(button(u"Close"_s));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(readFile(u"file/user-pref.xml"_s).contains("BOOL"));
}

TEST_F(DialogTest, SpeaksTheUsersLanguage)
{
    host.translateDefinition = [](QString const &key, QString const &text) {
        return key.isEmpty() && text == "cells"_L1        ? u"cases"_s
            : key == "INT"_L1 && text == "Held cells."_L1 ? u"Cases tenues."_s
                                                          : QString();
    };
    for (auto const &[language, changed] : { std::pair(u"fr"_s, u"Modifi"_s), std::pair(u"ja"_s, u"変更"_s) }) {
        QTranslator translator;
        ASSERT_TRUE(translator.load("brivantpreference_"_L1 + language, QStringLiteral(TRANSLATIONS)));
        QCoreApplication::installTranslator(&translator);
        open();
        EXPECT_EQ(field<QSpinBox>("INT")->suffix(), u" cases"_s);
        EXPECT_TRUE(field<QCheckBox>("changed")->text().remove(u'&').contains(changed))
            << field<QCheckBox>("changed")->text();
        show("INT");
        EXPECT_TRUE(explanation().contains(u"<b>Cells &amp; frames</b>"_s)) << "English where there is no translation";
        EXPECT_TRUE(explanation().contains(u"Cases tenues."_s)) << explanation();
        QCoreApplication::removeTranslator(&translator);
    }
}

// What can be seen of a page is whole, in a small window with a large font and in every palette; the pictures are for
// the eyes of a reviewer.
TEST_F(DialogTest, FitsAndIsReadable)
{
    struct {
        char const *name;
        QPalette palette;
    } const palettes[] = { { "light", QApplication::palette() },
        { "dark",
            QPalette(Qt::white, QColor(70, 70, 70), QColor(90, 90, 90), QColor(30, 30, 30), QColor(60, 60, 60),
                Qt::white, Qt::white, QColor(35, 35, 35), QColor(45, 45, 45)) },
        { "contrast",
            QPalette(Qt::yellow, QColor(90, 90, 0), Qt::yellow, Qt::yellow, Qt::yellow, Qt::yellow, Qt::white,
                QColor(40, 40, 0), QColor(20, 20, 0)) } };
    struct {
        char const *name;
        QSize size;
        int points;
    } const sizes[] = { { "usual", QSize(880, 600), 10 }, { "small", QSize(420, 320), 18 } };
    host.installFolder.clear();
    QDir().mkpath(QStringLiteral(PICTURES));
    QFont const usual = QApplication::font();
    for (auto const &look : palettes) {
        QApplication::setPalette(look.palette);
        for (auto const &size : sizes) {
            QFont font = usual;
            font.setPointSize(size.points);
            QApplication::setFont(font);
            open();
            store->setRgbaValue(u"TIMELINE_MARK_KEY_DRAWING_COLOR"_s, 0xB04060E0);
            dialog->resize(size.size);
            QTest::qWait(20);
            EXPECT_TRUE(dialog->size() == size.size);
            for (int page = 0; page < pages().size(); ++page) {
                field<QListWidget>("pages")->setCurrentRow(page);
                QTest::qWait(10); // the layout comes later
                QString const name =
                    u"%1-%2-%3"_s.arg(QLatin1String(look.name), QLatin1String(size.name), pages()[page])
                        .replace(u' ', u'-');
                EXPECT_TRUE(QTest::qWaitFor([this] { return cutWidgets().isEmpty(); }, 1000))
                    << name << ' ' << cutWidgets().join(u'\n');
                EXPECT_TRUE(dialog->grab().save(QStringLiteral(PICTURES "/") + name + ".png"_L1));
            }
            show("BV_TOUCH_SPEED"); // far down on another page
            EXPECT_FALSE(field<QWidget>("BV_TOUCH_SPEED")->visibleRegion().isEmpty());
            if (qEnvironmentVariableIsSet("PREFS_UPDATE_EXPECTED") && &look == palettes && &size == sizes) {
                show("STAGE_AUTOSAVE_PROJECT_INTERVAL_MINUTES");
                typeNumber(field<QWidget>("STAGE_AUTOSAVE_PROJECT_INTERVAL_MINUTES"), "15");
                QTest::qWait(20);
                EXPECT_TRUE(dialog->grab().save(QStringLiteral(README_PICTURE)));
            }
            store->restoreDefaults();
            dialog->setSaving(false);
        }
    }
    QApplication::setFont(usual);
    QApplication::setPalette(palettes[0].palette);
}
