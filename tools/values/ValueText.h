#ifndef VALUETEXT_H
#define VALUETEXT_H

class PR_PrefItem;
class QString;

/*! Values of preferences as typed by a user. What PR_PrefItem::valueAsString() gives is among the forms accepted. */
namespace ValueText {
enum Outcome {
    Refused, /*!< The text is no value of the item's type. */
    Held, /*!< The item held the value already. */
    Changed
};

/*! Gives an item, which must not be locked, the value that a text stands for. */
Outcome assign(PR_PrefItem &item, QString const &text);
/*! The present value as a text that assign() takes back without loss. A value that none stands for, such as the font of
    a machine without fonts, gives some other text. */
QString exact(PR_PrefItem &item);
/*! What a value of the item looks like, to go on with after "expected". */
QString expectedForm(PR_PrefItem &item);
/*! Why a text is no value of the item, for a message. */
QString refusal(PR_PrefItem &item, QString const &text);
/*! That there is no such preference, and which one was probably meant; empty when none is near. */
QString noSuchPreference(QString const &key, QString const &nearest);
/*! Where the value comes from: "default", "user" or "facility". */
QString originOf(PR_PrefItem const &item);
/*! A text as part of one line: a tab, a line feed, a carriage return and a backslash as \\t, \\n, \\r and \\\\, other
    control characters as \\xNN. */
QString escaped(QString text);
} // namespace ValueText

#endif
