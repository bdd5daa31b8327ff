#include "FieldType_p.h"

#include "FieldWidgets_p.h"

#include <PR_BoolItem.h>
#include <PR_DoubleItem.h>
#include <PR_FontItem.h>
#include <PR_IntItem.h>
#include <PR_KeyItem.h>
#include <PR_RgbaItem.h>
#include <PR_StringItem.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <algorithm>
#include <limits>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace {
using Definition = FieldType::Definition;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FieldType)
};

QString translated(Definition const &definition, QString const &text)
{
    return PR_DefinitionList::translated(definition.key, text);
}

// What stands behind a number.
QString suffixOf(Definition const &definition)
{
    return definition.unit.isEmpty() ? QString() : u' ' + PR_DefinitionList::translated({}, definition.unit);
}

QString orEmpty(QString const &text)
{
    return text.isEmpty() ? Texts::tr("(empty)") : text;
}

// A box of texts that stand for values, which the data of its entries are. A value that is none of them is an entry of
// its own.
template <class Value> void showIn(QComboBox &box, Value const &value, QString const &text)
{
    int at = box.findData(value);
    if (at < 0) {
        box.addItem(text, value);
        at = box.count() - 1;
    }
    box.setCurrentIndex(at);
}

// Each of these says what is particular to one type: its item and widget, how the widget is made and how it shows a
// value. A typed number counts when it is complete, not at each digit: "1" on the way to "16" may be out of range.

struct BoolField {
    using Item = PR_BoolItem;
    using Widget = QCheckBox;

    template <class Write> static Widget *create(Item const &, Definition const &, Write const &write)
    {
        auto *const box = new QCheckBox;
        QObject::connect(box, &QCheckBox::clicked, box, write);
        return box;
    }
    static void show(Widget &box, Item const &item) { box.setChecked(item.value()); }
    static QString text(Item const &item, Definition const &)
    {
        return item.value() ? Texts::tr("on") : Texts::tr("off");
    }
};

// Numbers with names.
struct NamedNumberField {
    using Item = PR_IntItem;
    using Widget = QComboBox;

    static bool handles(Item const &, Definition const &definition) { return !definition.choices.isEmpty(); }
    template <class Write> static Widget *create(Item const &, Definition const &definition, Write const &write)
    {
        auto *const box = new QComboBox;
        for (auto const &choice : definition.choices)
            box->addItem(translated(definition, choice.name), choice.value);
        QObject::connect(box, &QComboBox::activated, box, [box, write] { write(box->currentData().toInt()); });
        return box;
    }
    static void show(Widget &box, Item const &item) { showIn(box, item.value(), QString::number(item.value())); }
    static QString text(Item const &item, Definition const &definition)
    {
        for (auto const &choice : definition.choices) {
            if (choice.value == item.value())
                return translated(definition, choice.name);
        }
        return QString::number(item.value());
    }
};

struct IntField {
    using Item = PR_IntItem;
    using Widget = QSpinBox;

    template <class Write> static Widget *create(Item const &, Definition const &definition, Write const &write)
    {
        auto *const box = new QSpinBox;
        box->setKeyboardTracking(false);
        box->setSuffix(suffixOf(definition));
        QObject::connect(box, &QSpinBox::valueChanged, box, write);
        return box;
    }
    static void show(Widget &box, Item const &item)
    {
        // The library lets a value lie outside of the range. Shown as it is, it is not changed by merely being looked
        // at.
        int const value = item.value();
        box.setRange(qMin(item.minValue(), value), qMax(item.maxValue(), value));
        box.setValue(value);
    }
    static QString text(Item const &item, Definition const &definition)
    {
        QSpinBox box;
        box.setSuffix(suffixOf(definition));
        show(box, item);
        return box.text();
    }
};

struct DoubleField {
    using Item = PR_DoubleItem;
    using Widget = NumberBox;

    template <class Write> static Widget *create(Item const &item, Definition const &definition, Write const &write)
    {
        auto *const box = new NumberBox(item.percentage());
        box->setKeyboardTracking(false);
        if (!item.percentage())
            box->setSuffix(suffixOf(definition));
        box->limits = { definition.minimum.value_or(std::numeric_limits<double>::lowest()),
            definition.maximum.value_or(std::numeric_limits<double>::max()) };
        QObject::connect(box, &NumberBox::valueChanged, box, [box, write] { write(box->number()); });
        return box;
    }
    static void show(Widget &box, Item const &item) { box.setNumber(item.value()); }
    static QString text(Item const &item, Definition const &definition)
    {
        NumberBox box(item.percentage());
        if (!item.percentage())
            box.setSuffix(suffixOf(definition));
        box.setNumber(item.value());
        return box.text();
    }
};

struct ColorField {
    using Item = PR_RgbaItem;
    using Widget = ColorButton;

    template <class Write> static Widget *create(Item const &, Definition const &, Write const &write)
    {
        auto *const button = new ColorButton;
        QObject::connect(
            button, &ColorButton::colorSelected, button, [write](QColor const &color) { write(color.rgba()); });
        return button;
    }
    static void show(Widget &button, Item const &item) { button.setColor(QColor::fromRgba(item.value())); }
    static QString text(Item const &item, Definition const &)
    {
        return ColorButton::text(QColor::fromRgba(item.value()));
    }
};

// Enumerations, those of the host as well. One without choices is left to the row for unknown types.
struct ChoiceField {
    using Item = PR_EnumItem;
    using Widget = QComboBox;

    static bool handles(Item const &item, Definition const &) { return !item.EnumNameList().isEmpty(); }
    template <class Write> static Widget *create(Item const &item, Definition const &, Write const &write)
    {
        auto *const box = new QComboBox;
        box->addItems(item.EnumNameList());
        QObject::connect(box, &QComboBox::activated, box, write);
        return box;
    }
    static void show(Widget &box, Item const &item) { box.setCurrentIndex(item.value()); }
    static QString text(Item const &item, Definition const &) { return item.valueAsDisplayString(); }
};

// A font is a choice among the item's own fonts, which are those that the host offers. Each is shown in itself.
struct FontField : ChoiceField {
    using Item = PR_FontItem;

    template <class Write> static Widget *create(Item const &item, Definition const &definition, Write const &write)
    {
        auto *const box = ChoiceField::create(item, definition, write);
        for (int i = 0; i < box->count(); ++i)
            box->setItemData(i, QFont(box->itemText(i)), Qt::FontRole);
        return box;
    }
};

// The row asks before it takes a key, so that it connects the field.
struct ShortcutField {
    using Item = PR_KeyItem;
    using Widget = ShortcutEdit;

    template <class Write> static Widget *create(Item const &, Definition const &, Write const &)
    {
        return new ShortcutEdit;
    }
    static void show(Widget &edit, Item const &item) { edit.setKeySequence(item.value()); }
    static QString text(Item const &item, Definition const &)
    {
        return orEmpty(item.value().toString(QKeySequence::NativeText));
    }
};

// The set whose defaults hold, among those that are installed.
struct PreferenceSetField {
    using Item = PR_StringItem;
    using Widget = QComboBox;

    static bool handles(Item const &item, Definition const &) { return item.getKey() == "PREFERENCE_SET"_L1; }
    template <class Write> static Widget *create(Item const &, Definition const &, Write const &write)
    {
        auto *const box = new QComboBox;
        box->addItem(Texts::tr("(none)"), QString(u""_s));
        for (QString const &name : PR_DefinitionList::preferenceSets())
            box->addItem(name, name);
        QObject::connect(box, &QComboBox::activated, box, [box, write] { write(box->currentData().toString()); });
        return box;
    }
    static void show(Widget &box, Item const &item)
    {
        showIn(box, item.value(), Texts::tr("%1 (not installed)").arg(item.value()));
    }
    static QString text(Item const &item, Definition const &)
    {
        return item.value().isEmpty() ? Texts::tr("(none)") : item.value();
    }
};

struct TextField {
    using Item = PR_StringItem;
    using Widget = QLineEdit;

    template <class Write> static Widget *create(Item const &, Definition const &, Write const &write)
    {
        auto *const edit = new QLineEdit;
        QObject::connect(edit, &QLineEdit::editingFinished, edit, [edit, write] { write(edit->text()); });
        return edit;
    }
    static void show(Widget &edit, Item const &item)
    {
        int const cursor = edit.cursorPosition();
        edit.setText(item.value());
        edit.setCursorPosition(edit.hasFocus() ? cursor : 0);
    }
    static QString text(Item const &item, Definition const &) { return orEmpty(item.value()); }
};

// A text whose key says that it is the path of a folder.
struct FolderField : TextField {
    using Widget = FolderEdit;

    static bool handles(Item const &item, Definition const &)
    {
        QStringList const words = item.getKey().split(u'_');
        return words.contains("FOLDER"_L1) || words.contains("PATH"_L1) || words.contains("DIRECTORY"_L1);
    }
    template <class Write> static Widget *create(Item const &, Definition const &, Write const &write)
    {
        auto *const edit = new FolderEdit;
        QObject::connect(edit, &FolderEdit::entered, edit, write);
        return edit;
    }
    static void show(Widget &edit, Item const &item) { edit.setPath(item.value()); }
};

// What the dialog does not know can still be looked at.
struct UnknownField {
    using Item = PR_PrefItem;
    using Widget = QLabel;

    template <class Write> static Widget *create(Item const &, Definition const &, Write const &) { return new QLabel; }
    static void show(Widget &label, Item const &item) { label.setText(item.valueAsString()); }
    static QString text(Item const &item, Definition const &) { return item.valueAsString(); }
};

template <class Field, class = void> struct HasCondition : std::false_type {
};
template <class Field> struct HasCondition<Field, std::void_t<decltype(&Field::handles)>> : std::true_type {
};

// The row of a type: its functions, behind a conversion of the item to its class.
template <class Field> constexpr FieldType row()
{
    using Item = typename Field::Item;
    FieldType type{};
    type.handles = [](PR_PrefItem const &item, Definition const &definition) {
        auto const *const typed = dynamic_cast<Item const *>(&item);
        if constexpr (HasCondition<Field>::value)
            return typed && Field::handles(*typed, definition);
        else
            return typed != nullptr;
    };
    type.create = [](PR_PrefItem const &item, Definition const &definition,
                      FieldType::Enter const &enter) -> QWidget * {
        return Field::create(static_cast<Item const &>(item), definition, [enter](auto const &value) {
            enter([&value](PR_PrefItem &target) {
                if constexpr (!std::is_same_v<Item, PR_PrefItem>)
                    (void)static_cast<Item &>(target).setValue(value);
            });
        });
    };
    type.show = [](QWidget *field, PR_PrefItem const &item) {
        Field::show(static_cast<typename Field::Widget &>(*field), static_cast<Item const &>(item));
    };
    type.text = [](PR_PrefItem const &item, Definition const &definition) {
        return Field::text(static_cast<Item const &>(item), definition);
    };
    return type;
}

// A special case stands before the usual one, a derived class of items before its base.
FieldType const types[] = { row<BoolField>(), row<NamedNumberField>(), row<IntField>(), row<DoubleField>(),
    row<ColorField>(), row<FontField>(), row<ChoiceField>(), row<ShortcutField>(), row<PreferenceSetField>(),
    row<FolderField>(), row<TextField>(), row<UnknownField>() };
} // namespace

FieldType const &FieldType::of(PR_PrefItem const &item, Definition const &definition)
{
    FieldType const *type = types;
    while (!type->handles(item, definition))
        ++type; // the last one handles every item
    return *type;
}
