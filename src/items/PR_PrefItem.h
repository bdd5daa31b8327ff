#ifndef PR_PREFITEM_H
#define PR_PREFITEM_H

#include "brivantpreference_export.h"

#include <QString>

class QDomDocument;
class QDomElement;
class TULex;

/*! One preference: what all types of preference have in common.

    The key, the tag and the category never change. The origin says where the current value comes from and whether the
    user's file holds it. */
class BRIVANT_PREFERENCE_EXPORT PR_PrefItem {
public:
    /*! Numbers are stored and passed; 17 and 18 have no text. */
    enum Category : int {
        Internal = 0, /*!< Also of items that a store creates by itself; never reset to the default. */
        All = 1,
        General = 2,
        DrawingMode = 3,
        Sceneplanning = 4,
        NodeView = 5,
        ExposureSheet = 6,
        ColorManagement = 7,
        Highlighting = 8,
        ElementManager = 9,
        FunctionEditor = 10,
        Library = 11,
        PlaybackView = 12,
        Timeline = 13,
        Sound = 14,
        TreeView = 15,
        RenderView = 16,
        Scanning = 19,
        Render = 20,
        Panovia = 21
    };

    /*! Where the current value comes from. */
    enum Origin : int {
        OriginDefault = 0, /*!< Holds the default; written to the user's file only when forced. */
        OriginUser = 1, /*!< Set by a caller or read from the user's file; written to it. */
        OriginFacility = 2 /*!< Locked by a facility-wide override; refuses changes of value. */
    };

    /*! What kind of editor an item needs. */
    enum Type : int { Shortcut = 1, Color = 2, Other = 3 };

    /*! Origin is OriginUser for the category Internal, else OriginDefault. */
    PR_PrefItem(Category category, QString const &key, QString const &tag);
    /*! \name Copies */
    /*!\{*/
    /*! All of an item, its key too; never assign to an item that is in a store. */
    PR_PrefItem(PR_PrefItem const &) = default;
    PR_PrefItem &operator=(PR_PrefItem const &) = default; /*!< The same. */
    /*!\}*/

    /*! Takes the value of an element of a user's file. True when the element is this item's and its value can be
        read; a locked item then keeps its own value. */
    virtual bool loadXml(QDomElement const &element);
    /*! Takes the value behind the current token when that token is the key; the rest as loadXml(). */
    virtual bool load(TULex &lex);
    /*! Appends the item's element to the root of \a document, when the origin is OriginUser or \a force is set. */
    virtual void saveXml(QDomDocument *document, bool force);
    /*! Makes the default the current value; leaves the origin alone. */
    virtual void defaultInUser() = 0;
    virtual ~PR_PrefItem();
    /*! An equal item of the same class; the caller owns it. */
    [[nodiscard]] virtual PR_PrefItem *clone() = 0;
    /*! Takes over descriptions, origin and values of \a other, an item of the same class. */
    virtual void copy(PR_PrefItem *other);
    /*! The kind of editor that the item needs. */
    [[nodiscard]] virtual Type getType() const = 0;
    /*! The current value as a text to show. */
    [[nodiscard]] virtual QString valueAsString() const = 0;
    /*! The default as a text to show. */
    [[nodiscard]] virtual QString defaultValueAsString() const = 0;

    /*! \name Facts
        References stay valid until the item is deleted. */
    /*!\{*/
    /*! The key: what the store finds the item by. */
    [[nodiscard]] QString const &getKey() const { return m_key; }
    /*! Element name of the item in the user's file. */
    [[nodiscard]] QString const &getTag() const { return m_tag; }
    /*! The label of an editor. */
    [[nodiscard]] QString const &getShortDescription() const { return m_shortDescription; }
    /*! The help text of an editor. */
    [[nodiscard]] QString const &getLongDescription() const { return m_longDescription; }
    /*! The page on which an editor shows the item. */
    [[nodiscard]] Category getCategory() const { return m_category; }
    /*! Where the current value comes from. */
    [[nodiscard]] Origin getOrigin() const { return m_origin; }
    /*!\}*/

    /*! Replaces the label. */
    void setShortDescription(QString text);
    /*! Replaces the help text. */
    void setLongDescription(QString text);

    /*! Whether the key equals \a key. */
    bool operator==(QString &key) const { return m_key == key; }
    bool operator==(QString const &key) const { return m_key == key; } /*!< The same. */

    /*! Whether the item is locked; with \a report, a lock is reported to the user. */
    bool hasFacilityOverride(bool report) const;
    /*! Locks the item at its current value. */
    void setFacilityOverride() { m_origin = OriginFacility; }
    /*! Sets the origin to OriginDefault, whatever it was. */
    void removeFacilityOverride() { m_origin = OriginDefault; }
    /*! Back to the default, unless the item is locked or of the category Internal. */
    void restoreDefault();

    /*! The category of a text of the definition files (exact); Internal for any other text. */
    static Category getCategory(QString const &text);
    /*! The text of a category; "Internal" for numbers without a text and for Panovia. It is English, as in the
        definition files; QCoreApplication::translate("PR_PrefItem", text) gives what to show. */
    [[nodiscard]] static QString getCategoryString(Category category);

protected:
    /*! For classes that set a value in another way than by changeValue() of PR_TypedItem. */
    void setOrigin(Origin origin) { m_origin = origin; }

private:
    friend class PR_Preference; // an item whose value goes from the user's file stays

    QString m_tag;
    QString m_shortDescription;
    QString m_longDescription;
    QString m_key;
    Category m_category;
    Origin m_origin;
};

#endif
