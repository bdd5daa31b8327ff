#include "PR_Loader_p.h"
#include "PR_Preference_p.h"
#include "PR_UserFileMerge_p.h"
#include "PR_UserFileWriter_p.h"

#include "PR_PrefConstants.h"

#include "oswRemapPath.h"

#include <QFileInfo>

namespace {
constexpr int patience = 2000; // milliseconds that a save waits for others

// The user's file as it stands, or its backup where it is damaged. Without a root when there is none; the reason when
// it cannot be known what the file holds.
PR_XmlFile presentFile(QString const &path, QString &reason)
{
    PR_XmlFile file = PR_XmlFile::read(path);
    if (file.state == PR_XmlFile::NotXml) {
        PR_XmlFile backup = PR_XmlFile::read(PL_FileSlot::backupOf(PL_FileSlot::targetOf(path)));
        file.tree = std::move(backup.tree);
    } else if (file.state == PR_XmlFile::CannotOpen && QFileInfo::exists(path)) {
        reason = file.error;
    }
    return file;
}
} // namespace

void PR_Preference::setShared(bool shared)
{
    d->isShared = shared;
    d->ownBase = shared ? d->ownElements() : PR_XmlTree();
    d->isBaseOwn = false;
}

bool PR_Preference::isShared() const
{
    return d->isShared;
}

PL_FileSlot::Result PR_Preference::Private::writeShared(PR_XmlTree own, QString &remark)
{
    using Result = PL_FileSlot::Result;
    QString const path = oswRemapPath::RemapPath2(pathXml);
    std::optional<PR_XmlFile> base; // parsed when others have written
    for (int tries = 0;; ++tries) {
        auto lock = std::make_unique<PL_FileLock>(path, tries == 0 ? patience : 0);
        bool const isLast = tries == 20;
        if (lock->isHeld() && lock->target() != PL_FileSlot::targetOf(path) && !isLast)
            continue; // a link leads elsewhere by now

        PR_XmlFile file;
        std::optional<PR_UserFileMerge> merge;
        PR_XmlTree merged;
        PL_FileVersion seen = slot.known;
        PL_FileSlot const before = slot;
        if (!isBaseOwn || !(PL_FileVersion::of(path) == slot.known)) {
            QString reason;
            file = presentFile(path, reason);
            if (!reason.isEmpty())
                return { Result::CannotWrite, reason };
            if (!base)
                base = PR_XmlFile::parse(baseText);
            merge.emplace(PR_UserFileMerge::Sides{
                base->tree.root(), file.tree.root(), ownBase.root(), own.root(), isBaseBackup });
            PR_Element *const root = merged.addElement(nullptr, kPref);
            for (PR_Element const *element : merge->merged())
                merged.addCopy(root, *element);
            seen = file.version;
            if (file.state == PR_XmlFile::Read) { // all that it holds goes on
                slot.known = seen;
                slot.state = PL_FileSlot::Good;
            }
        }
        QByteArray const bytes = bytesOf(merge ? *merged.root() : *own.root(), remark);
        Result const result = slot.replace(path, bytes, isDamaged, lock->isHeld() ? nullptr : &seen);
        if (!result.isInPlace)
            slot = before; // what others saved is not taken over yet
        if (result.step == Result::Changed && !isLast)
            continue;
        if (!result.isInPlace)
            return result;
        if (!lock->isHeld() && remark.isEmpty())
            remark = tr("Saved without a lock on the file.");
        lock.reset(); // what follows may call into the host
        if (!merge) {
            setBase(bytes, std::move(own));
            return result;
        }
        hasTakenOver = isBaseKnown && takeOver(*merge);
        setBase(bytes, ownElements());
        isBaseOwn = PR_UserFileMerge::areEqual(*merged.root(), *ownBase.root());
        return result;
    }
}

bool PR_Preference::Private::takeOver(PR_UserFileMerge const &merge)
{
    PR_Loader loader(items);
    auto const writeText = PR_Loader::quietWriter(items);
    bool isChanged = false;
    for (QString const &key : merge.foreignChanges()) {
        PR_ItemSet::Entry entry = items.find(key);
        std::unique_ptr<PR_PrefItem> const before(entry ? entry->clone() : nullptr);
        if (merge.theirs(key).empty() && entry && !entry->hasFacilityOverride(false)) {
            entry->defaultInUser(); // also of one that has no definition
            entry->setOrigin(PR_PrefItem::OriginDefault);
            unresolvedFonts.remove(key);
        }
        for (PR_Element const *element : merge.theirs(key))
            loader.loadElement(*element, writeText);
        entry = items.find(key);
        if (!before || !entry) {
            isChanged = isChanged || entry;
            continue;
        }
        PR_ItemTypes::Row const *const row = entry.exactRow();
        bool const isSame = row && PR_ItemSet::Entry(before.get()).exactRow() == row
            ? row->haveSameValue(before.get(), entry.item())
            : before->valueAsString() == entry->valueAsString();
        isChanged = isChanged || !isSame;
    }
    unresolvedFonts.insert(loader.unresolvedFonts);
    return isChanged;
}

void PR_Preference::Private::setBase(QByteArray const &text, PR_XmlTree own, PR_UserFileMerge const *unwritten)
{
    baseText = text;
    isBaseBackup = false;
    isBaseKnown = true;
    if (!unwritten) {
        ownBase = std::move(own);
        return;
    }
    isBaseOwn = false;
    PR_XmlTree base;
    PR_Element *const root = base.addElement(nullptr, kPref);
    auto const copy = [&](PR_XmlTree const &from, bool isUnwritten) {
        for (PR_Element const &element : PR_Elements(from.root())) {
            if (unwritten->isOwnChange(element.id().toString()) == isUnwritten)
                base.addCopy(root, element);
        }
    };
    copy(own, false);
    copy(ownBase, true);
    ownBase = std::move(base);
}

bool PR_Preference::reloadShared()
{
    QString const path = oswRemapPath::RemapPath2(getPathXml());
    if (!isShared() || d->isLoading || !d->isBaseKnown || path.isEmpty() || PL_FileVersion::of(path) == d->slot.known)
        return false;
    PR_XmlFile const file = PR_XmlFile::read(path);
    if (file.state != PR_XmlFile::Read)
        return false;
    PR_XmlFile const base = PR_XmlFile::parse(d->baseText);
    PR_XmlTree const own = d->ownElements();
    PR_UserFileMerge const merge(
        { base.tree.root(), file.tree.root(), d->ownBase.root(), own.root(), d->isBaseBackup });
    bool const isChanged = d->takeOver(merge);
    d->setBase(file.text, d->ownElements(), &merge);
    d->slot.known = file.version;
    if (isChanged)
        emitPreferenceChanged();
    return isChanged;
}
