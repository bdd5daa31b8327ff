#include "Command.h"
#include "ItemFilter.h"
#include "PrefsStore.h"
#include "ValueText.h"

#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_IntItem.h"
#include "PR_PrefConstants.h"

#include "MSG_Scope.h"
#include "UT_Json.h"

#include <QCommandLineParser>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <set>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
// ---- Values as JSON: true or false, a number, or else the text that "set" takes

QJsonValue::Type naturalType(PR_PrefItem const &item)
{
    if (dynamic_cast<PR_BoolItem const *>(&item))
        return QJsonValue::Bool;
    if (dynamic_cast<PR_IntItem const *>(&item) || dynamic_cast<PR_DoubleItem const *>(&item))
        return QJsonValue::Double;
    return QJsonValue::String;
}

QString textOf(double number)
{
    double const wholeLimit = 9007199254740992.0; // 2^53: up to here every whole number is a double
    if (std::abs(number) < wholeLimit && std::trunc(number) == number)
        return QString::number(static_cast<qint64>(number));
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString textOf(QJsonValue const &value)
{
    if (value.isBool())
        return value.toBool() ? u"true"_s : u"false"_s;
    return value.isDouble() ? textOf(value.toDouble()) : value.toString();
}

// The present value; null when there is no form in which it could be taken back without loss.
QJsonValue jsonOf(PR_PrefItem &item)
{
    QString const text = ValueText::exact(item);
    std::unique_ptr<PR_PrefItem> const trial(item.clone());
    trial->removeFacilityOverride();
    if (ValueText::assign(*trial, text) != ValueText::Held)
        return QJsonValue::Null;
    switch (naturalType(item)) {
    case QJsonValue::Bool:
        return static_cast<PR_BoolItem &>(item).value();
    case QJsonValue::Double:
        return text.toDouble();
    default:
        return text;
    }
}

// Gives an item, which must not be locked, the value. What jsonOf() gives counts as held, even null.
ValueText::Outcome assign(PR_PrefItem &item, QJsonValue const &value)
{
    if (value == jsonOf(item))
        return ValueText::Held;
    return value.type() == naturalType(item) ? ValueText::assign(item, textOf(value)) : ValueText::Refused;
}

// What a value of the item looks like, to go on with after "expected".
QString expectedForm(PR_PrefItem &item)
{
    QJsonValue::Type const type = naturalType(item);
    QString const json = type == QJsonValue::Bool ? u"true or false"_s
        : type == QJsonValue::Double              ? u"a JSON number"_s
                                                  : u"a JSON string"_s;
    return u"%1, as %2"_s.arg(ValueText::expectedForm(item), json);
}

// The value on one line, cut short when it is long.
QString shown(QJsonValue const &value)
{
    qsizetype const limit = 60;
    QString const text = UT_Json::serializeStr(value.toVariant());
    return text.size() > limit ? text.left(limit) + "..."_L1 : text;
}

// ---- Differences

void print(Call const &call, QJsonObject const &object)
{
    call.out << QString::fromUtf8(QJsonDocument(object).toJson());
}

// Rows of a key and its values in two states, printed as text or as JSON, in which "from" and "to" are named.
class Differences {
public:
    Differences(Call const &call, QString const &from, QString const &to)
        : m_call(call)
        , m_from(from)
        , m_to(to)
    {
    }

    // A null pointer stands for a state without a value.
    void add(QString const &key, PR_PrefItem *from, PR_PrefItem *to)
    {
        if (from && to && ValueText::exact(*from) == ValueText::exact(*to))
            return;
        QString fromText = from ? from->valueAsString() : QString();
        QString toText = to ? to->valueAsString() : QString();
        if (from && to && fromText == toText) { // numbers that differ behind the digits that are shown
            fromText = ValueText::exact(*from);
            toText = ValueText::exact(*to);
        }
        m_lines +=
            u"%1\t%2\t%3\n"_s.arg(ValueText::escaped(key), ValueText::escaped(fromText), ValueText::escaped(toText));
        QJsonObject row;
        if (from)
            row.insert(m_from, jsonOf(*from));
        if (to)
            row.insert(m_to, jsonOf(*to));
        m_rows.insert(key, row);
    }

    void print() const
    {
        if (m_call.options.isSet(u"json"_s))
            ::print(m_call, m_rows);
        else
            m_call.out << m_lines;
    }

private:
    Call const &m_call;
    QString m_from;
    QString m_to;
    QString m_lines;
    QJsonObject m_rows;
};

// All bytes of a file, "-" being standard input. Throws a Failure when it cannot be read or is larger than any that
// this program writes.
QByteArray bytesOf(QString const &name)
{
    qint64 const limit = 16 << 20; // a hundred times the largest that is known; a device may never end
    auto const failure = [&name](QString const &reason) {
        return Failure{ ExitStatus::CannotRead, u"%1 cannot be read: %2"_s.arg(ValueText::escaped(name), reason) };
    };
    QFile file(name);
    bool const isOpen = name == "-"_L1 ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        throw failure(file.errorString());
    QByteArray bytes;
    while (bytes.size() <= limit) {
        QByteArray const piece = file.read(limit + 1 - bytes.size());
        if (piece.isEmpty())
            break;
        bytes.append(piece);
    }
    if (file.error() != QFile::NoError)
        throw failure(file.errorString());
    if (bytes.size() > limit)
        throw failure(u"it has more than %1 bytes."_s.arg(limit));
    return bytes;
}

bool looksLikeXml(QString const &name, QByteArray bytes)
{
    QByteArray const utf8Mark("\xEF\xBB\xBF");
    if (bytes.startsWith(utf8Mark))
        bytes.remove(0, utf8Mark.size());
    return bytes.trimmed().startsWith('<') || bytes.startsWith("\xFE\xFF") || bytes.startsWith("\xFF\xFE")
        || name.endsWith(".xml"_L1, Qt::CaseInsensitive);
}

// Another user's values, loaded from a copy, which has no backup beside it.
std::unique_ptr<PrefsStore> loadOther(Call const &call, QString const &name)
{
    auto const failure = [](QString const &reason) { return Failure{ ExitStatus::CannotRead, reason }; };
    auto const noUsersFile = [&] { return failure(u"%1 is no user's file."_s.arg(ValueText::escaped(name))); };
    QByteArray const bytes = bytesOf(name);
    bool const isXml = looksLikeXml(name, bytes);
    PR_XmlFile const file = isXml ? PR_XmlFile::parse(bytes) : PR_XmlFile();
    PR_Element const *const root = file.tree.root();
    if (isXml ? !root || root->name != kPref || holdsDefinitions(*root) : bytes.contains('\0'))
        throw noUsersFile();
    auto const noCopy = [&](QString const &reason) {
        return failure(u"%1 cannot be copied to compare with it: %2"_s.arg(ValueText::escaped(name), reason));
    };
    QTemporaryDir const folder;
    if (!folder.isValid())
        throw noCopy(folder.errorString());
    QString const path = folder.filePath(u"user"_s);
    QFile copy(isXml ? path + ".xml"_L1 : path);
    if (!copy.open(QIODevice::WriteOnly) || copy.write(bytes) != bytes.size() || !copy.flush())
        throw noCopy(copy.errorString());
    copy.close();

    // What is not about the copy was said of the user's own store already.
    bool isDamaged = false;
    ReportScope const elsewhere([&](HostReport const &message) {
        isDamaged = isDamaged || (message.action != MSG_Scope::Log && message.text.contains(path));
    });
    auto store = std::make_unique<PrefsStore>(path, call.options.isSet(u"local"_s));
    store->useFontsWhere([](PR_PrefItem const &) { return true; });
    if (isDamaged)
        throw noUsersFile();
    return store;
}

void showChanges(Call const &call)
{
    Differences differences(call, u"default"_s, u"value"_s);
    PrefsStore store(call);
    store.useFontsWhere([](PR_PrefItem const &item) { return item.getOrigin() == PR_PrefItem::OriginUser; });
    for (PR_PrefItem *item : store) {
        if (item->getOrigin() != PR_PrefItem::OriginUser)
            continue;
        std::unique_ptr<PR_PrefItem> initial;
        if (item->getCategory() != PR_PrefItem::Internal) { // else there is no definition
            initial.reset(item->clone());
            initial->defaultInUser();
        }
        differences.add(item->getKey(), initial.get(), item);
    }
    differences.print();
}

void compare(Call const &call, QString const &name)
{
    PrefsStore store(call);
    store.useFontsWhere([](PR_PrefItem const &) { return true; });
    std::unique_ptr<PrefsStore> const other = loadOther(call, name);
    std::set<QString> keys;
    for (PrefsStore const *side : { &store, other.get() }) {
        for (PR_PrefItem const *item : *side)
            keys.insert(item->getKey());
    }
    Differences differences(call, u"there"_s, u"here"_s);
    for (QString const &key : keys)
        differences.add(key, other->find(key), store.find(key));
    differences.print();
}

QJsonObject valuesOf(QString const &name)
{
    auto const failure = [&name](QString const &reason) {
        return Failure{ ExitStatus::CannotRead, u"%1 holds no values: %2"_s.arg(ValueText::escaped(name), reason) };
    };
    QByteArray const bytes = bytesOf(name);
    QJsonParseError error{};
    QJsonDocument const document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw failure(u"%1 at byte %2."_s.arg(error.errorString()).arg(error.offset));
    if (!document.isObject())
        throw failure(u"a JSON object is expected."_s);
    return document.object();
}

// What a load would change. Throws a Failure that names every key that cannot have its value.
std::vector<std::pair<PR_PrefItem *, QJsonValue>> plannedChanges(
    PrefsStore const &store, QJsonObject const &values, Differences &differences)
{
    std::vector<std::pair<PR_PrefItem *, QJsonValue>> changes;
    ExitStatus status = ExitStatus::Done;
    QStringList refusals;
    auto const refuse = [&](ExitStatus reason, QString const &text) {
        refusals.append(text);
        status = status == ExitStatus::Done ? reason : std::min(status, reason);
    };
    for (auto value = values.begin(); value != values.end(); ++value) {
        QString const key = ValueText::escaped(value.key());
        PR_PrefItem *const item = store.find(value.key());
        if (!item) {
            refuse(ExitStatus::NoSuchKey, u"%1: there is no such preference."_s.arg(key));
            continue;
        }
        bool const isLocked = item->hasFacilityOverride(false);
        std::unique_ptr<PR_PrefItem> const trial(item->clone());
        trial->removeFacilityOverride();
        ValueText::Outcome const outcome = assign(*trial, value.value());
        if (outcome == ValueText::Held)
            continue;
        if (isLocked) {
            refuse(ExitStatus::Locked, u"%1: locked by the facility."_s.arg(key));
        } else if (outcome == ValueText::Refused) {
            refuse(ExitStatus::NotAValue,
                u"%1: %2 is no value; expected %3."_s.arg(key, shown(value.value()), expectedForm(*item)));
        } else {
            differences.add(value.key(), item, trial.get());
            changes.emplace_back(item, value.value());
        }
    }
    if (!refusals.isEmpty())
        throw Failure{ status, refusals.join(u'\n') + "\nNothing was changed."_L1 };
    return changes;
}
} // namespace

void Verbs::diff(Call const &call)
{
    if (call.options.isSet(u"against"_s))
        compare(call, call.options.value(u"against"_s));
    else
        showChanges(call);
}

void Verbs::dump(Call const &call)
{
    ItemFilter const filter(call.options);
    bool const mayBeUndefined = call.options.isSet(u"category"_s); // else for users who may not have the keys
    PrefsStore store(call);
    store.useFontsWhere([&filter](PR_PrefItem const &item) { return filter.admits(item); });
    QJsonObject values;
    for (PR_PrefItem *item : store) {
        if (filter.admits(*item) && (mayBeUndefined || item->getCategory() != PR_PrefItem::Internal))
            values.insert(item->getKey(), jsonOf(*item));
    }
    print(call, values);
}

void Verbs::load(Call const &call)
{
    QJsonObject const values = valuesOf(call.arguments[0]);
    bool const isTrial = call.options.isSet(u"dry-run"_s);
    PrefsStore store(call, isTrial ? PrefsStore::ToRead : PrefsStore::ToWrite);
    store.useFontsWhere([&values](PR_PrefItem const &item) { return values.contains(item.getKey()); });
    Differences differences(call, {}, {});
    auto const changes = plannedChanges(store, values, differences);
    if (isTrial)
        return differences.print();
    for (auto const &[item, value] : changes)
        assign(*item, value);
    if (!changes.empty())
        store.saveNow();
}
