#include "Explanation.h"

#include "ValueText.h"

#include "PR_PrefItem.h"

#include <QJsonArray>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {
QString textOf(Explanation::Outcome outcome)
{
    switch (outcome) {
    case Explanation::Won:
        return u"won"_s;
    case Explanation::Lost:
        return u"lost"_s;
    case Explanation::LeftOut:
        return u"left out"_s;
    case Explanation::Absent:
        break;
    }
    return u"absent"_s;
}

// A key without a definition has none.
bool hasDefault(PR_PrefItem const &item)
{
    return item.getCategory() != PR_PrefItem::Internal;
}

QJsonObject toJson(Explanation::Step const &step)
{
    return { { u"layer"_s, step.layer }, { u"outcome"_s, textOf(step.outcome) }, { u"file"_s, step.file },
        { u"line"_s, step.place.line }, { u"column"_s, step.place.column },
        { u"value"_s, step.outcome == Explanation::Absent ? QJsonValue() : QJsonValue(step.value) },
        { u"locked"_s, step.isLocked }, { u"condition"_s, step.condition }, { u"reason"_s, step.reason } };
}
} // namespace

QString Explanation::Step::placeText() const
{
    return place.line == 0 ? file : u"%1:%2"_s.arg(file, QString::number(place.line));
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
        out << step.layer << '\t' << textOf(step.outcome) << '\t' << ValueText::escaped(step.value) << '\t'
            << step.placeText() << '\t' << notes.join("; "_L1) << '\n';
    }
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
