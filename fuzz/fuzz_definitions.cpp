// Definition files of an installation: the main file and, behind a line "%%", the override.

#include "FuzzStore.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size)
{
    QByteArray const input(reinterpret_cast<char const *>(data), qsizetype(size));
    QByteArray const marker = "\n%%\n";
    qsizetype const mainSize = input.indexOf(marker);
    FuzzStore::removeUserFiles();
    FuzzStore::write(FuzzStore::Definitions, input.left(mainSize));
    FuzzStore::write(FuzzStore::Override, mainSize < 0 ? QByteArray() : input.mid(mainSize + marker.size()));

    FuzzStore store;
    store.checkReads();
    FuzzStore copy(store);
    require(copy.states() == store.states(), "a copy has the same items");

    for (auto const &[key, state] : store.states()) {
        PR_PrefItem *const item = store.find(key);
        (void)PR_PrefItem::getCategoryString(item->getCategory());
        if (!item->hasFacilityOverride(false))
            continue;
        store.setBoolValue(key, true);
        store.setIntValue(key, 7);
        store.setDoubleValue(key, 7);
        store.setEnumValue(key, 1);
        store.setRgbaValue(key, 7);
        store.setStringValue(key, key);
        store.restoreDefault(key);
        require(store.find(key) == item, "a locked item stays", key);
    }
    require(copy.states() == store.states(), "locked items keep their values");

    store.checkRoundTrip();
    store.restoreDefaults();
    for (PR_PrefItem const *item : store)
        require(item->getCategory() == PR_PrefItem::Internal || item->valueAsString() == item->defaultValueAsString(),
            "a default is restored", item->getKey());
    return 0;
}
