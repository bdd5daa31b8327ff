#include "PR_PrefItem.h"

#include "MSG_Scope.h"

#include <QCoreApplication>

#include <utility>

namespace {
struct CategoryText {
    PR_PrefItem::Category category;
    char const *text;
};

// They stand in definition files, so the library hands them out in English; a host translates what it shows.
CategoryText const categoryTexts[] = {
    { PR_PrefItem::Internal, QT_TRANSLATE_NOOP("PR_PrefItem", "Internal") },
    { PR_PrefItem::All, QT_TRANSLATE_NOOP("PR_PrefItem", "All") },
    { PR_PrefItem::General, QT_TRANSLATE_NOOP("PR_PrefItem", "General") },
    { PR_PrefItem::DrawingMode, QT_TRANSLATE_NOOP("PR_PrefItem", "Drawing Mode") },
    { PR_PrefItem::Sceneplanning, QT_TRANSLATE_NOOP("PR_PrefItem", "Sceneplanning") },
    { PR_PrefItem::NodeView, QT_TRANSLATE_NOOP("PR_PrefItem", "Node View") },
    { PR_PrefItem::ExposureSheet, QT_TRANSLATE_NOOP("PR_PrefItem", "Exposure Sheet") },
    { PR_PrefItem::ColorManagement, QT_TRANSLATE_NOOP("PR_PrefItem", "Color Management") },
    { PR_PrefItem::Highlighting, QT_TRANSLATE_NOOP("PR_PrefItem", "Highlighting") },
    { PR_PrefItem::ElementManager, QT_TRANSLATE_NOOP("PR_PrefItem", "Element Manager") },
    { PR_PrefItem::FunctionEditor, QT_TRANSLATE_NOOP("PR_PrefItem", "Function Editor") },
    { PR_PrefItem::Library, QT_TRANSLATE_NOOP("PR_PrefItem", "Library") },
    { PR_PrefItem::PlaybackView, QT_TRANSLATE_NOOP("PR_PrefItem", "Playback View") },
    { PR_PrefItem::Timeline, QT_TRANSLATE_NOOP("PR_PrefItem", "Timeline") },
    { PR_PrefItem::Sound, QT_TRANSLATE_NOOP("PR_PrefItem", "Sound") },
    { PR_PrefItem::TreeView, QT_TRANSLATE_NOOP("PR_PrefItem", "Tree View") },
    { PR_PrefItem::RenderView, QT_TRANSLATE_NOOP("PR_PrefItem", "Render View") },
    { PR_PrefItem::Scanning, QT_TRANSLATE_NOOP("PR_PrefItem", "Scanning") },
    { PR_PrefItem::Render, QT_TRANSLATE_NOOP("PR_PrefItem", "Render") },
    { PR_PrefItem::Panovia, "Panovia" },
};
} // namespace

// The order of the members puts what a read or write by key looks at, the key and the origin, next to the value of the
// derived class: together in one cache line.
PR_PrefItem::PR_PrefItem(Category category, QString const &key, QString const &tag)
    : m_tag(tag)
    , m_shortDescription(QStringLiteral(QT_TRANSLATE_NOOP("PR_PrefItem", "No short description available")))
    , m_longDescription(QStringLiteral(QT_TRANSLATE_NOOP("PR_PrefItem", "No long description available")))
    , m_key(key)
    , m_category(category)
    , m_origin(category == Internal ? OriginUser : OriginDefault)
{
}

PR_PrefItem::~PR_PrefItem() = default;

bool PR_PrefItem::loadXml(QDomElement const &)
{
    return false;
}

bool PR_PrefItem::load(TULex &)
{
    return false;
}

void PR_PrefItem::saveXml(QDomDocument *, bool)
{
}

void PR_PrefItem::copy(PR_PrefItem *other)
{
    m_shortDescription = other->m_shortDescription;
    m_longDescription = other->m_longDescription;
}

void PR_PrefItem::setShortDescription(QString text)
{
    m_shortDescription = std::move(text);
}

void PR_PrefItem::setLongDescription(QString text)
{
    m_longDescription = std::move(text);
}

bool PR_PrefItem::hasFacilityOverride(bool report) const
{
    bool const locked = m_origin == OriginFacility;
    if (locked && report) {
        static char const *const text = QT_TRANSLATE_NOOP("PR_PrefItem",
            "This preference has been locked at the facility-wide level.\n Please see your system administrator for "
            "details.");
        MSG_Scope(QStringLiteral("PR_PrefItem"), QCoreApplication::translate("PR_PrefItem", text), MSG_Scope::Refusal,
            ErrorCode::None);
    }
    return locked;
}

void PR_PrefItem::restoreDefault()
{
    if (m_category == Internal || m_origin == OriginFacility)
        return;
    m_origin = OriginDefault;
    defaultInUser();
}

PR_PrefItem::Category PR_PrefItem::getCategory(QString const &text)
{
    for (CategoryText const &entry : categoryTexts) {
        if (text == QLatin1String(entry.text))
            return entry.category;
    }
    return Internal;
}

QString PR_PrefItem::getCategoryString(Category category)
{
    // Panovia is understood when read but has never been shown under its own name.
    for (CategoryText const &entry : categoryTexts) {
        if (entry.category == category && category != Panovia)
            return QString::fromLatin1(entry.text);
    }
    return QStringLiteral("Internal");
}
