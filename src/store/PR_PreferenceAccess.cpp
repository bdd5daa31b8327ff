#include "PR_Preference_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
// What the log says of a key that is read, or written, in a way that it does not have.
template <class Item> char const *misuseOf(PR_ItemSet::Entry const &entry)
{
    return !entry ? "there is no such key" : !entry.as<Item>() ? "the item is of another type" : nullptr;
}

// What an item gives to a defaulted read of the type Value; false when the value does not fit.
template <class Value, class Item> bool valueOf(Item const *item, Value &value)
{
    value = item->value();
    return true;
}

bool valueOf(PR_DoubleItem const *item, int &value)
{
    double const whole = std::trunc(item->value());
    bool const fits = whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max();
    if (fits)
        value = static_cast<int>(whole);
    return fits;
}
} // namespace

template <class Item, class... Others, class Fallback>
auto const &PR_Preference::Private::read(QString const &key, Fallback const &fallback) const
{
    auto const entry = items.find(key);
    auto const *value = &fallback.value();
    auto const take = [&](auto const *item) {
        if (item)
            value = &item->value();
        return item != nullptr;
    };
    if (!(take(entry.as<Item>()) || ... || take(entry.as<Others>())) && lcMisuse().isWarningEnabled())
        noteMisuse(items, key, misuseOf<Item>(entry));
    return *value;
}

template <class... Items, class Value, class Conversion>
Value PR_Preference::Private::readOr(QString const &key, Value value, Conversion conversion) const
{
    auto const entry = items.find(key);
    if (auto const *text = entry.as<PR_StringItem>()) {
        bool ok = false;
        Value const converted = (text->*conversion)(ok);
        return ok ? converted : value;
    }
    auto const take = [&value](auto const *item) { return item && valueOf(item, value); };
    if (!(... || take(entry.as<Items>())) && lcMisuse().isWarningEnabled())
        noteMisuse(items, key, entry ? "the item is of another type" : "there is no such key");
    return value;
}

template <class Item, class Value>
void PR_Preference::Private::write(PR_Preference &store, QString const &key, Value const &value)
{
    auto entry = items.find(key);
    QString name = key; // which may be that of the item to be replaced
    if (lcMisuse().isWarningEnabled()) {
        if (char const *const what = misuseOf<Item>(entry))
            noteMisuse(items, key, what);
        auto const *const range = entry.as<PR_IntItem>();
        if constexpr (std::is_same_v<Item, PR_IntItem>) {
            if (range && (value < range->minValue() || value > range->maxValue()))
                noteMisuse(items, key, "the value is outside of the range");
        }
    }
    if (!entry.as<Item>()) {
        if (entry && std::is_same_v<Item, PR_StringItem>)
            return;
        bool const isLocked = entry && entry->hasFacilityOverride(true);
        if (isLocked)
            return;
        if constexpr (std::is_same_v<Item, PR_EnumItem>)
            items.insert(std::make_unique<PR_EnumItem>(PR_PrefItem::Internal, name, "enum"));
        else
            items.insert(std::make_unique<Item>(PR_PrefItem::Internal, name, value));
        entry = items.find(name);
    }
    auto *const item = entry.as<Item>();
    if (!item || !item->setValue(value)) {
        // Another store of the file may have removed it, so that its value stands in no file.
        if (item && item->getCategory() == PR_PrefItem::Internal && item->getOrigin() == PR_PrefItem::OriginDefault)
            item->setOrigin(PR_PrefItem::OriginUser);
        return tell(&name); // a new item may hold another value than the fallback was
    }
    if constexpr (std::is_same_v<Item, PR_EnumItem>)
        unresolvedFonts.remove(item->getKey());
    announce(store, &name);
}

PR_PrefItem *PR_Preference::find(QString key) const
{
    return d->items.find(key).item();
}

PR_Preference::const_iterator PR_Preference::begin() const
{
    return d->items.ordered().cbegin();
}

PR_Preference::const_iterator PR_Preference::end() const
{
    return d->items.ordered().cend();
}

bool const &PR_Preference::getBool(QString const &key) const
{
    return d->read<PR_BoolItem>(key, d->fallbackBool);
}

int const &PR_Preference::getInt(QString const &key) const
{
    return d->read<PR_IntItem, PR_EnumItem>(key, d->fallbackInt);
}

int const &PR_Preference::getEnum(QString const &key) const
{
    return d->read<PR_EnumItem, PR_IntItem>(key, d->fallbackEnum);
}

double const &PR_Preference::getDouble(QString const &key) const
{
    return d->read<PR_DoubleItem>(key, d->fallbackDouble);
}

unsigned int const &PR_Preference::getRgba(QString const &key) const
{
    return d->read<PR_RgbaItem>(key, d->fallbackRgba);
}

QString const &PR_Preference::getString(QString const &key) const
{
    return d->read<PR_StringItem>(key, d->fallbackString);
}

QKeySequence const &PR_Preference::getKey(QString const &key) const
{
    return d->read<PR_KeyItem>(key, d->fallbackKey);
}

bool PR_Preference::getBoolValue(QString const &key, bool value) const
{
    return d->readOr<PR_BoolItem>(key, value, &PR_StringItem::valueAsBool);
}

int PR_Preference::getIntValue(QString const &key, int value) const
{
    return d->readOr<PR_IntItem, PR_DoubleItem>(key, value, &PR_StringItem::valueAsInt);
}

double PR_Preference::getDoubleValue(QString const &key, double value) const
{
    return d->readOr<PR_DoubleItem, PR_IntItem>(key, value, &PR_StringItem::valueAsDouble);
}

int PR_Preference::getEnumValue(QString const &key, int value) const
{
    return d->readOr<PR_EnumItem>(key, value, &PR_StringItem::valueAsInt);
}

unsigned int PR_Preference::getRgbaValue(QString const &key, unsigned int const &value) const
{
    return d->readOr<PR_RgbaItem>(key, value, &PR_StringItem::valueAsRgba);
}

QString PR_Preference::getStringValue(QString const &key, QString const &value) const
{
    auto const entry = d->items.find(key);
    if (!entry && lcMisuse().isWarningEnabled())
        Private::noteMisuse(d->items, key, "there is no such key");
    return entry ? entry->valueAsString() : value;
}

QString PR_Preference::getFontValue(QString const &key, QString const &value) const
{
    auto *const font = d->items.find(key).as<PR_FontItem>();
    return font ? font->fontName() : value;
}

void PR_Preference::setBoolValue(QString const &key, bool value)
{
    d->write<PR_BoolItem>(*this, key, value);
}

void PR_Preference::setIntValue(QString const &key, int value)
{
    d->write<PR_IntItem>(*this, key, value);
}

void PR_Preference::setDoubleValue(QString const &key, double value)
{
    d->write<PR_DoubleItem>(*this, key, value);
}

void PR_Preference::setEnumValue(QString const &key, int value)
{
    d->write<PR_EnumItem>(*this, key, value);
}

void PR_Preference::setRgbaValue(QString const &key, unsigned int const &value)
{
    d->write<PR_RgbaItem>(*this, key, value);
}

void PR_Preference::setStringValue(QString const &key, QString const &value)
{
    d->write<PR_StringItem>(*this, key, value);
}

void PR_Preference::emitPreferenceChanged()
{
    d->announce(*this, nullptr);
}

void PR_Preference::disableEvents()
{
    d->emitsEvents = false;
}

void PR_Preference::updateCache()
{
}

void PR_Preference::deleteKey(QString const &key)
{
    d->items.erase(key);
    d->tell(nullptr);
}

void PR_Preference::deleteAllKeyBeginingWith(QString const &prefix)
{
    d->items.erasePrefix(prefix);
    d->tell(nullptr);
}

void PR_Preference::clear()
{
    d->items.clear();
}

void PR_Preference::restoreDefault(QString const &key)
{
    if (auto const entry = d->items.find(key)) {
        entry->restoreDefault();
        d->forgetFonts();
        d->tell(&key);
    }
}

void PR_Preference::restoreDefaults()
{
    d->items.visit([](PR_PrefItem *item) { item->restoreDefault(); });
    d->forgetFonts();
    d->tell(nullptr);
}

// Forgets the names of fonts that are no user's values any more.
void PR_Preference::Private::forgetFonts()
{
    for (QString const &key : unresolvedFonts.keys()) {
        PR_PrefItem const *const item = items.find(key).item();
        if (!item || item->getOrigin() != PR_PrefItem::OriginUser)
            unresolvedFonts.remove(key);
    }
}

// ---- Typed keys

namespace {
// The item class of a type of keys, and its value as one of the type.
template <class T> struct Typed {
    using Item = PR_ItemTypes::ItemOf<T>;
    static T valueOf(Item const *item) { return item->value(); }
};

template <> struct Typed<PR_FontName> {
    using Item = PR_FontItem;
    static PR_FontName valueOf(Item *item) { return { item->fontName() }; }
};
} // namespace

template <class T> T PR_Preference::value(PR_Key<T> const &key) const
{
    auto *const item = d->items.find(key.text()).template as<typename Typed<T>::Item>();
    return item ? Typed<T>::valueOf(item) : T(key.defaultValue());
}

template <class T> bool PR_Preference::setTyped(PR_Key<T> const &key, T const &value)
{
    if constexpr (std::is_same_v<T, int>) {
        if (value < key.minValue() || value > key.maxValue())
            return false;
    }
    QString const name = Private::ownText(key);
    auto const entry = d->items.find(name);
    bool const holds = !entry || !entry->hasFacilityOverride(false) || this->value(key) == value;
    if constexpr (std::is_same_v<T, QKeySequence>) {
        if (value.count() > 1)
            return false;
        d->write<PR_KeyItem>(*this, name, value.isEmpty() ? 0 : value[0].toCombined());
    } else if constexpr (std::is_same_v<T, PR_FontName>) {
        auto const *const font = entry.template as<PR_FontItem>();
        QStringList const names = font ? font->EnumNameList() : QStringList();
        auto const found = std::find_if(names.begin(), names.end(),
            [&value](QString const &each) { return each.compare(value.name, Qt::CaseInsensitive) == 0; });
        if (found == names.end())
            return false;
        d->write<PR_EnumItem>(*this, name, int(found - names.begin()));
    } else {
        if (std::is_same_v<T, QString> && entry && !entry.template as<PR_StringItem>())
            return false;
        d->write<typename Typed<T>::Item>(*this, name, value);
    }
    return holds; // without a look at the store, which a receiver may have deleted
}

#define TYPED(T)                                                                                                       \
    template BRIVANT_PREFERENCE_EXPORT T PR_Preference::value(PR_Key<T> const &) const;                                \
    template BRIVANT_PREFERENCE_EXPORT bool PR_Preference::setTyped(PR_Key<T> const &, T const &);
TYPED(bool)
TYPED(int)
TYPED(double)
TYPED(unsigned int)
TYPED(QString)
TYPED(QKeySequence)
TYPED(PR_FontName)

bool PR_Preference::isLocked(PR_KeyName const &key) const
{
    auto const entry = d->items.find(key.text());
    return entry && entry->hasFacilityOverride(false);
}

void PR_Preference::reset(PR_KeyName const &key)
{
    restoreDefault(key.text());
}
