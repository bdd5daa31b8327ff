#include "FieldType.h"

#include "ColorButton.h"
#include "NumberBox.h"
#include "ShortcutEdit.h"

#include <PR_BoolItem.h>
#include <PR_DoubleItem.h>
#include <PR_FontItem.h>
#include <PR_IntItem.h>
#include <PR_KeyItem.h>
#include <PR_RgbaItem.h>
#include <PR_StringItem.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <type_traits>

namespace {
// Each of these says what is particular to one type: its item and widget, how the widget is made and how it shows a
// value. A typed number counts when it is complete, not at each digit: "1" on the way to "16" may be out of range.

struct BoolField {
    using Item = PR_BoolItem;
    using Widget = QCheckBox;

    template <class Write> static Widget *create(Item const &, Write const &write)
    {
        auto *const box = new QCheckBox;
        QObject::connect(box, &QCheckBox::clicked, box, write);
        return box;
    }
    static void show(Widget &box, Item const &item) { box.setChecked(item.value()); }
};

struct IntField {
    using Item = PR_IntItem;
    using Widget = QSpinBox;

    template <class Write> static Widget *create(Item const &, Write const &write)
    {
        auto *const box = new QSpinBox;
        box->setKeyboardTracking(false);
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
};

struct DoubleField {
    using Item = PR_DoubleItem;
    using Widget = NumberBox;

    template <class Write> static Widget *create(Item const &item, Write const &write)
    {
        auto *const box = new NumberBox(item.percentage());
        box->setKeyboardTracking(false);
        QObject::connect(box, &NumberBox::valueChanged, box, [box, write] { write(box->number()); });
        return box;
    }
    static void show(Widget &box, Item const &item) { box.setNumber(item.value()); }
};

struct ColorField {
    using Item = PR_RgbaItem;
    using Widget = ColorButton;

    template <class Write> static Widget *create(Item const &, Write const &write)
    {
        auto *const button = new ColorButton;
        QObject::connect(
            button, &ColorButton::colorSelected, button, [write](QColor const &color) { write(color.rgba()); });
        return button;
    }
    static void show(Widget &button, Item const &item) { button.setColor(QColor::fromRgba(item.value())); }
};

// Enumerations, those of the host as well. One without choices is left to the row for unknown types.
struct ChoiceField {
    using Item = PR_EnumItem;
    using Widget = QComboBox;

    static bool handles(Item const &item) { return !item.EnumNameList().isEmpty(); }
    template <class Write> static Widget *create(Item const &item, Write const &write)
    {
        auto *const box = new QComboBox;
        box->addItems(item.EnumNameList());
        QObject::connect(box, &QComboBox::activated, box, write);
        return box;
    }
    static void show(Widget &box, Item const &item) { box.setCurrentIndex(item.value()); }
};

// A font is a choice among the item's own fonts, which are those that the host offers. Each is shown in itself.
struct FontField : ChoiceField {
    using Item = PR_FontItem;

    template <class Write> static Widget *create(Item const &item, Write const &write)
    {
        auto *const box = ChoiceField::create(item, write);
        for (int i = 0; i < box->count(); ++i)
            box->setItemData(i, QFont(box->itemText(i)), Qt::FontRole);
        return box;
    }
};

struct ShortcutField {
    using Item = PR_KeyItem;
    using Widget = ShortcutEdit;

    template <class Write> static Widget *create(Item const &, Write const &write)
    {
        auto *const edit = new ShortcutEdit;
        QObject::connect(edit, &ShortcutEdit::keySequenceChanged, edit, [edit, write] { write(edit->code()); });
        return edit;
    }
    static void show(Widget &edit, Item const &item) { edit.setKeySequence(item.value()); }
};

struct TextField {
    using Item = PR_StringItem;
    using Widget = QLineEdit;

    template <class Write> static Widget *create(Item const &, Write const &write)
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
};

// What the dialog does not know can still be looked at.
struct UnknownField {
    using Item = PR_PrefItem;
    using Widget = QLabel;

    template <class Write> static Widget *create(Item const &, Write const &) { return new QLabel; }
    static void show(Widget &label, Item const &item) { label.setText(item.valueAsString()); }
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
    type.handles = [](PR_PrefItem const &item) {
        auto const *const typed = dynamic_cast<Item const *>(&item);
        if constexpr (HasCondition<Field>::value)
            return typed && Field::handles(*typed);
        else
            return typed != nullptr;
    };
    type.create = [](PR_PrefItem const &item, FieldType::Enter const &enter) -> QWidget * {
        return Field::create(static_cast<Item const &>(item), [enter](auto const &value) {
            enter([&value](PR_PrefItem &target) {
                if constexpr (std::is_same_v<Item, PR_PrefItem>)
                    return false;
                else
                    return static_cast<Item &>(target).setValue(value);
            });
        });
    };
    type.show = [](QWidget *field, PR_PrefItem const &item) {
        Field::show(static_cast<typename Field::Widget &>(*field), static_cast<Item const &>(item));
    };
    return type;
}

// A derived class of items stands before its base.
FieldType const types[] = { row<BoolField>(), row<IntField>(), row<DoubleField>(), row<ColorField>(), row<FontField>(),
    row<ChoiceField>(), row<ShortcutField>(), row<TextField>(), row<UnknownField>() };
} // namespace

FieldType const &FieldType::of(PR_PrefItem const &item)
{
    FieldType const *type = types;
    while (!type->handles(item))
        ++type; // the last one handles every item
    return *type;
}
