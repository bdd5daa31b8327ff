// A user's XML file.

#include "FuzzStore.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size)
{
    static bool const defined = (FuzzStore::writeDefinitions(), true);
    QByteArray const input(reinterpret_cast<char const *>(data), qsizetype(size));
    FuzzStore::removeUserFiles();
    FuzzStore::write(FuzzStore::UserXml, input);

    FuzzStore store;
    require(defined && store.getErrorCode() == PR_Preference::NoError, "any file of a user can be loaded");
    store.checkReads();
    store.save();
    require(FuzzStore::read(FuzzStore::UserBackup) == input || FuzzStore::read(FuzzStore::UserDamaged) == input,
        "a save keeps the file that it replaces");
    store.checkRoundTrip();
    return 0;
}
