#ifndef PR_PREFITEMFACTORYMANAGER_H
#define PR_PREFITEMFACTORYMANAGER_H

#include "PR_PrefItemFactory.h"

#include <QString>

#include <map>

/*! The registry of item factories by type name. Filled when the library is loaded; used from one thread. */
class BRIVANT_PREFERENCE_EXPORT PR_PrefItemFactoryManager {
public:
    /*! The one registry; created on first use, never destroyed. */
    [[nodiscard]] static PR_PrefItemFactoryManager *getInstance();

    /*! \name Copies */
    /*!\{*/
    /*! Another registry of the same factories, which the library does not look into. */
    PR_PrefItemFactoryManager(PR_PrefItemFactoryManager const &);
    PR_PrefItemFactoryManager &operator=(PR_PrefItemFactoryManager const &); /*!< The same. */
    ~PR_PrefItemFactoryManager(); /*!< Gives up its references to the factories. */
    /*!\}*/

    /*! The factory registered under exactly \a name, or null. */
    [[nodiscard]] UT_SharedPtr<PR_AbstractPrefItemFactory> factory(QString const &name);

private:
    friend class PR_AbstractPrefItemFactory;

    PR_PrefItemFactoryManager();
    void addFactory(PR_AbstractPrefItemFactory *factory);

    std::map<QString, UT_SharedPtr<PR_AbstractPrefItemFactory>> m_factories;
};

#endif
