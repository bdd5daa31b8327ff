#include "PR_Preference_p.h"
#include "PR_UserFileWriter_p.h"

#include "PR_ElementDom_p.h"
#include "PR_PrefConstants.h"

#include "oswRemapPath.h"
#include "tufile.h"

#include <QSet>

#include <cstdio>
#include <utility>

namespace Messages = PR_PreferenceMessages;

PR_XmlTree PR_Preference::Private::ownElements() const
{
    QString remark;
    return ownElements(remark);
}

PR_XmlTree PR_Preference::Private::ownElements(QString &remark) const
{
    QStringList unsavedKeys;
    QSet<QString> mendedKeys;
    // Whether an item keeps a key of its own without the characters that XML cannot hold.
    auto const hasOwnKey = [&](PR_PrefItem const *item) {
        QString const key = PR_UserFileWriter::xmlText(item->getKey());
        if (key == item->getKey())
            return true;
        bool const isFree = !key.isEmpty() && !items.find(key) && !mendedKeys.contains(key);
        if (isFree)
            mendedKeys.insert(key);
        else if (item->getOrigin() == PR_PrefItem::OriginUser)
            unsavedKeys.append(key);
        return isFree;
    };
    // Adds the element of an item of the library's, if it is saved; false for one of another class.
    auto const add = [&](PR_PrefItem *item, PR_XmlTree &tree, PR_Element *root) {
        PR_ItemSet::Entry const entry(item);
        PR_ItemTypes::Row const *const row = entry.exactRow();
        if (!row || item->getOrigin() != PR_PrefItem::OriginUser || !hasOwnKey(item))
            return row != nullptr;
        auto const *const font = entry.as<PR_FontItem>();
        if (font && font->value() == 0 && unresolvedFonts.contains(font->getKey()))
            tree.addItem(root, font->getTag(), font->getKey(), unresolvedFonts.value(font->getKey()));
        else
            row->write(item, tree, root);
        return true;
    };

    PR_XmlTree tree;
    if (items.hasOthers()) {
        // An item of another class sees the document so far, and adds to it what it likes.
        QDomDocument document;
        QDomElement const root = document.createElement(kPref);
        document.appendChild(root);
        items.visitByKey([&](PR_PrefItem *item) {
            PR_XmlTree own;
            if (!add(item, own, nullptr)) {
                if (hasOwnKey(item))
                    item->saveXml(&document, false);
            } else if (own.root()) {
                PR_ElementDom::append(document, root, *own.root());
            }
        });
        PR_ElementDom::add(tree, nullptr, root);
    } else {
        PR_Element *const root = tree.addElement(nullptr, kPref);
        for (PR_PrefItem *item : items.ordered()) {
            if (item->getOrigin() == PR_PrefItem::OriginUser)
                add(item, tree, root);
        }
    }
    if (!unsavedKeys.isEmpty())
        remark = tr("Left out, as XML cannot hold their keys: %1").arg(unsavedKeys.join(u' '));
    return tree;
}

bool PR_Preference::Private::isDamaged(QString const &path)
{
    return PR_XmlFile::read(path).state == PR_XmlFile::NotXml;
}

QByteArray PR_Preference::Private::bytesOf(PR_Element const &root, QString &remark)
{
    PR_UserFileWriter writer;
    QByteArray const bytes = writer.bytesOf(root);
    if (remark.isEmpty() && writer.isCutShort())
        remark = tr("Left out, as no load would take it: an element with too many attributes or too deeply nested.");
    return bytes;
}

PL_FileSlot::Result PR_Preference::Private::write(PR_XmlTree own, QString &remark)
{
    if (isShared)
        return writeShared(std::move(own), remark);
    QByteArray const bytes = bytesOf(*own.root(), remark);
    PL_FileSlot::Result const result = slot.replace(oswRemapPath::RemapPath2(pathXml), bytes, isDamaged);
    if (result.isInPlace)
        baseText = bytes;
    return result;
}

void PR_Preference::save()
{
    QString const path = getPathXml();
    auto const failed = [this](QString const &reason) { d->saveStatus = { SaveStatus::Failed, reason }; };
    auto const reportFailure = [&](char const *message, QString const &reason) {
        failed(reason);
        Messages::report(message, MSG_Scope::Error, path);
    };
    if (d->isLoading) // from a report or a host's item: a part of the values would replace all of them
        return failed(tr("The store is being loaded."));
    if (getPath().isEmpty() || path.isEmpty())
        return failed(tr("The store has no preference file."));

    MSG_Text error;
    if (!tufile::checkCreatePath(path, error, true)) {
        reportFailure(Messages::CannotOpenForWriting, error.getText());
        std::fprintf(stderr, "Unable create preference file: %s. %s\n", path.toUtf8().constData(),
            error.getText().toUtf8().constData());
        return;
    }

    QString remark;
    PL_FileSlot::Result const result = d->write(d->ownElements(remark), remark);
    if (result.step == PL_FileSlot::Result::Done)
        d->saveStatus = { SaveStatus::Saved, remark };
    else if (result.step == PL_FileSlot::Result::CannotOpen)
        reportFailure(Messages::CannotOpenForWriting, result.reason);
    else
        reportFailure(Messages::WriteError, result.reason);
    // Last: a receiver may delete the store.
    if (std::exchange(d->hasTakenOver, false))
        emitPreferenceChanged();
}

PR_Preference::SaveStatus PR_Preference::saveStatus() const
{
    return d->saveStatus;
}
