#include "Command.h"
#include "Installation.h"
#include "ValueText.h"

#include "PR_DefinitionList.h"

#include "PL_FileSlot_p.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <QXmlStreamWriter>

#include <map>

using namespace Qt::StringLiterals;

namespace {
struct Message {
    QString what = {}; // label, description, ...; empty for one that no definition has any more
    QString translation = {};
    QString state = u"unfinished"_s; // as the attribute "type" of a translation; empty when it is done
};
using Messages = std::map<std::pair<QString, QString>, Message>; // by key, empty for what many share, and English text

QString textOf(PR_Element const &parent, QStringView name)
{
    QString text;
    for (PR_Element const &element : PR_Elements(parent, name)) {
        for (PR_Node const *node = element.firstNode; node; node = node->next) {
            if (node->kind == PR_Node::Text || node->kind == PR_Node::Cdata)
                text += static_cast<PR_TextNode const *>(node)->text;
        }
    }
    return text;
}

// Takes the translations of a file of an earlier call, and those that Linguist has put into it.
void takeTranslations(PR_Element const &root, Messages &messages)
{
    for (PR_Element const &context : PR_Elements(root)) {
        for (PR_Element const &message : PR_Elements(context, u"message")) {
            QString const text = textOf(message, u"translation");
            if (!text.isEmpty())
                messages[{ textOf(message, u"comment"), textOf(message, u"source") }] = { {}, text,
                    (*PR_Elements(message, u"translation")).attribute(u"type").toString() };
        }
    }
}

void addTexts(PR_Element const &definition, Messages &messages)
{
    QString const key = definition.id().toString();
    auto const add = [&](QString const &text, QString const &what, bool isShared = false) {
        if (text.isEmpty())
            return;
        Message &message = messages[{ isShared ? QString() : key, text }];
        message.what = what;
        if (message.state == "vanished"_L1 || message.state == "obsolete"_L1)
            message.state.clear(); // it is back
    };
    add(definition.attribute(u"shortDesc").toString(), u"Label"_s);
    add(definition.attribute(u"longDesc").toString(), u"Description"_s);
    add(definition.attribute(u"group").toString(), u"Group"_s, true);
    add(definition.attribute(u"unit").toString(), u"Unit"_s, true);
    auto const choices = PR_DefinitionList::choicesOf(definition.attribute(u"choices").toString());
    for (auto const &choice : choices.value_or(QList<PR_DefinitionList::Choice>()))
        add(choice.name, u"Name of %1"_s.arg(choice.value));
}

QByteArray bytesOf(Messages const &messages, QString const &language)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeDTD(u"<!DOCTYPE TS>"_s);
    xml.writeStartElement(u"TS"_s);
    xml.writeAttribute(u"version"_s, u"2.1"_s);
    if (!language.isEmpty())
        xml.writeAttribute(u"language"_s, language);
    xml.writeStartElement(u"context"_s);
    xml.writeTextElement(u"name"_s, u"Preferences"_s);
    for (auto const &[place, message] : messages) {
        xml.writeStartElement(u"message"_s);
        xml.writeTextElement(u"source"_s, place.second);
        if (!place.first.isEmpty())
            xml.writeTextElement(u"comment"_s, place.first);
        if (!message.what.isEmpty())
            xml.writeTextElement(u"extracomment"_s, message.what);
        xml.writeStartElement(u"translation"_s);
        QString const state = message.what.isEmpty() ? u"vanished"_s : message.state;
        if (!state.isEmpty())
            xml.writeAttribute(u"type"_s, state);
        xml.writeCharacters(message.translation);
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return bytes;
}
} // namespace

void Verbs::texts(Call const &call)
{
    QString const path = call.options.value(u"ts"_s);
    if (path.isEmpty())
        throw Failure{ ExitStatus::WrongUsage, u"texts needs --ts and a FILE."_s };
    Messages messages;
    static QRegularExpression const suffix(u"_([a-z]{2,3}(_[A-Z]{2})?)\\.ts$"_s);
    QString language = suffix.match(path).captured(1);
    PR_XmlFile const file = PR_XmlFile::read(path);
    if (file.state == PR_XmlFile::Read && file.tree.root()->name == u"TS") {
        if (file.tree.root()->hasAttribute(u"language"))
            language = file.tree.root()->attribute(u"language").toString();
        takeTranslations(*file.tree.root(), messages);
    } else if (file.state != PR_XmlFile::CannotOpen) {
        throw Failure{ ExitStatus::CannotRead, u"%1 is no file of translations."_s.arg(ValueText::escaped(path)) };
    }
    for (QString const &definitions : Installation::files()) {
        PR_XmlFile const each = PR_XmlFile::read(definitions, PR_Loader::MaximumDefinitions);
        if (each.state != PR_XmlFile::Read)
            throw Failure{ ExitStatus::CannotRead, u"%1: %2"_s.arg(ValueText::escaped(definitions), each.error) };
        for (PR_Element const &category : PR_Elements(each.tree.root(), u"category")) {
            for (PR_Element const &element : PR_Elements(category))
                addTexts(element, messages);
        }
    }
    PL_FileSlot slot;
    slot.modeOfNewFile = 0644;
    auto const result = slot.replace(
        path, bytesOf(messages, language), [](QString const &) { return false; }, &file.version);
    if (result.step != PL_FileSlot::Result::Done)
        throw Failure{ ExitStatus::CannotWrite,
            u"%1 cannot be written: %2"_s.arg(ValueText::escaped(path), result.reason) };
}
