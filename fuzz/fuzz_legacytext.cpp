// A user's legacy text file, whose values go to the XML file at the first save.

#include "FuzzStore.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size)
{
    static bool const defined = (FuzzStore::writeDefinitions(), true);
    FuzzStore::removeUserFiles();
    FuzzStore::write(FuzzStore::UserText, QByteArray(reinterpret_cast<char const *>(data), qsizetype(size)));

    FuzzStore store;
    require(defined && store.getErrorCode() == PR_Preference::NoError, "any text can be loaded");
    store.checkReads();
    store.checkRoundTrip();
    return 0;
}
