#ifndef KEYFRAMEITEM_H
#define KEYFRAMEITEM_H

#include <PR_EnumItem.h>

/*! How a function goes from one key frame to the next: a type of preference that a host adds to those of the library.

    The element "keyFrame" of a definition file makes one, once registerType() was called. */
class KeyFrameItem : public PR_EnumItem {
public:
    /*! From a definition: "value" names the default choice. */
    KeyFrameItem(Category category, QString const &key, QDomElement const &definition);

    PR_PrefItem *clone() override;

    /*! To be called before a store is created. */
    static void registerType();
};

#endif
