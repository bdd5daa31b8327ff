#include "Explanation.h"

#include "ValueText.h"

#include "PR_PrefItem.h"

#include "oswUtil.h"

#include <QJsonArray>
#include <QTextStream>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
QString textOf(Explanation::Outcome outcome)
{
    static char const *const texts[] = { "won", "lost", "left out", "absent" };
    return QString::fromLatin1(texts[outcome]);
}

QString textOf(PR_LoadObserver::Layer layer)
{
    static char const *const texts[] = { "definitions", "preference set", "override", "user file", "text file" };
    return QString::fromLatin1(texts[layer]);
}

// A key without a definition has none.
bool hasDefault(PR_PrefItem const &item)
{
    return item.getCategory() != PR_PrefItem::Internal;
}

QJsonObject toJson(Explanation::Step const &step)
{
    return { { u"layer"_s, textOf(step.layer) }, { u"outcome"_s, textOf(step.outcome) }, { u"file"_s, step.file },
        { u"line"_s, step.line }, { u"column"_s, step.column },
        { u"value"_s, step.outcome == Explanation::Absent ? QJsonValue() : QJsonValue(step.value) },
        { u"locked"_s, step.isLocked }, { u"condition"_s, step.condition }, { u"reason"_s, step.reason } };
}
} // namespace

QString Explanation::placeText(QString const &file, int line)
{
    QString const folder = oswUtil::ZeltDir(false) + u'/';
    QString const path = file.startsWith(folder) ? file.mid(folder.size()) : file;
    return line == 0 ? path : u"%1:%2"_s.arg(path, QString::number(line));
}

void Explanation::add(Step const &step)
{
    if (step.outcome == Won) {
        if (m_winner >= 0) {
            Step &earlier = steps[size_t(m_winner)];
            earlier.outcome = Lost;
            earlier.reason = u"replaced by "_s + step.placeText();
        }
        m_winner = qsizetype(steps.size());
    }
    steps.push_back(step);
}

bool Explanation::has(PR_LoadObserver::Layer layer) const
{
    return std::any_of(steps.begin(), steps.end(), [layer](Step const &step) { return step.layer == layer; });
}

QString Explanation::toText() const
{
    QString text;
    QTextStream out(&text);
    out << "Key: " << ValueText::escaped(key) << '\n';
    for (Step const &step : steps) {
        QStringList notes;
        for (QString const &note : { step.isLocked ? u"locks the key"_s : QString(), step.condition, step.reason }) {
            if (!note.isEmpty())
                notes.append(ValueText::escaped(note));
        }
        out << textOf(step.layer) << '\t' << textOf(step.outcome) << '\t' << ValueText::escaped(step.value) << '\t'
            << ValueText::escaped(step.placeText()) << '\t' << notes.join("; "_L1) << '\n';
    }
    if (!keptFile.isEmpty())
        out << "Kept: " << ValueText::escaped(keptFile) << " holds values that a run could not read\n";
    if (!item) {
        out << "No such preference under these conditions\n";
        return text;
    }
    out << "Value: " << ValueText::escaped(item->valueAsString()) << '\n';
    if (hasDefault(*item))
        out << "Default: " << ValueText::escaped(item->defaultValueAsString()) << '\n';
    out << "Origin: " << ValueText::originOf(*item) << '\n';
    return text;
}

QJsonObject Explanation::toJson() const
{
    QJsonArray layers;
    for (Step const &step : steps)
        layers.append(::toJson(step));
    QJsonObject object{ { u"key"_s, key }, { u"layers"_s, layers } };
    if (!keptFile.isEmpty())
        object.insert(u"kept"_s, keptFile);
    if (item) {
        object.insert(u"type"_s, item->getTag());
        object.insert(u"value"_s, item->valueAsString());
        if (hasDefault(*item))
            object.insert(u"default"_s, item->defaultValueAsString());
        object.insert(u"origin"_s, ValueText::originOf(*item));
    } else {
        object.insert(u"value"_s, QJsonValue());
    }
    return object;
}
