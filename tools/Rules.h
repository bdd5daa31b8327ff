#ifndef RULES_H
#define RULES_H

#include <QStringList>

/*! What the checks of files look for. */
enum class Rule {
    CannotRead,
    NotXml,
    UnknownRoot,
    UnknownElement,
    UnknownAttribute,
    IgnoredContent,
    MissingId,
    DuplicateKey,
    ShadowedKey,
    DroppedByLock,
    UnknownCategory,
    MissingValue,
    BadValue,
    BadFlag,
    ReversedRange,
    OutsideRange,
    OutsideChannel,
    UnreadableShortcut,
    MissingFont,
    BadPlatform,
    BadMode,
    BadFeature,
    NeverHolds,
    ConditionalCachedKey,
    UnknownKey,
    ChangedType,
    ChangedCategory,
    RepeatedDefault,
    MissingSet,
    Count
};

enum class Severity { None, Warning, Error };

/*! What is said about a rule. The names are for ever: scripts rely on them. */
struct RuleText {
    char const *name;
    Severity inDefinitions; /*!< Also in preference sets and overrides. */
    Severity inUserFile;
    char const *explanation;
};

QStringList ruleNames();
RuleText const &textOf(Rule rule);
char const *textOf(Severity severity);

#endif
