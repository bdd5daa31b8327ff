#ifndef PR_PREFITEMFACTORY_H
#define PR_PREFITEMFACTORY_H

#include "PR_PrefItem.h"
#include "UT_SharedPtr.h"
#include "brivantpreference_export.h"

#include <new>

/*! Builds items of one type from definition elements. */
class BRIVANT_PREFERENCE_EXPORT PR_AbstractPrefItemFactory : public UT_ShareBase {
public:
    /*! \a key is the element name of the definitions that the factory serves. */
    explicit PR_AbstractPrefItemFactory(QString const &key);
    /*! A copy is not registered. */
    PR_AbstractPrefItemFactory(PR_AbstractPrefItemFactory const &) = default;
    PR_AbstractPrefItemFactory &operator=(PR_AbstractPrefItemFactory const &) = delete;
    ~PR_AbstractPrefItemFactory() override;

    /*! A new item that the caller owns; null when it cannot be allocated. The definition stands in a small document of
       its own: below copies of its category and of the root, with all that it contains, but without the elements beside
        it. */
    [[nodiscard]] virtual PR_PrefItem *create(
        PR_PrefItem::Category category, QString const &key, QDomElement const &definition) = 0;

    /*! The element name of the definitions that the factory serves. */
    [[nodiscard]] QString const &key() const { return m_key; }
    /*! Registers the factory under its key, in place of one registered before. The registry shares it: one made by new
        is deleted when another takes its place, so never replace a static one, such as those of the library. */
    void registerClass();

private:
    QString const m_key;
};

/*! Factory of the item class \a T, by its constructor from a definition. */
template <class T> class PR_ConcretePrefItemFactory : public PR_AbstractPrefItemFactory {
public:
    using PR_AbstractPrefItemFactory::PR_AbstractPrefItemFactory;

    PR_PrefItem *create(PR_PrefItem::Category category, QString const &key, QDomElement const &definition) override
    {
        return new (std::nothrow) T(category, key, definition);
    }
};

/*! Lets a registration be written as the initialiser of a static object. */
class BRIVANT_PREFERENCE_EXPORT PR_ConcretePrefItemFactoryWrapper {
public:
    /*! The argument is not used. */
    PR_ConcretePrefItemFactoryWrapper(int);
    /*! Does nothing. */
    PR_ConcretePrefItemFactoryWrapper &operator=(PR_ConcretePrefItemFactoryWrapper const &);
};

#endif
