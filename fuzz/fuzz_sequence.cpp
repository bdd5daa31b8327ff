// Two shared stores of one file, with faults: every value that was said to be saved is found by the next load.

#include "FaultyFiles.h"
#include "FuzzStore.h"

#include <QFile>

#include <map>
#include <memory>
#include <set>

using namespace Qt::StringLiterals;

namespace {
constexpr int keyCount = 4;

QString keyOf(int number)
{
    return u"SEQ"_s + QString::number(number);
}

// The value that a store would save.
int valueIn(PR_Preference const &store, int key)
{
    PR_PrefItem const *const item = store.find(keyOf(key));
    return item && item->getOrigin() == PR_PrefItem::OriginUser ? store.getIntValue(keyOf(key), 0) : 0;
}

// A store, and what it changed and has not saved yet; 0 stands for no value.
struct Instance {
    std::unique_ptr<FuzzStore> store;
    std::map<int, int> changes;
    std::map<int, int> base; // the values after the last load, save or reload
    std::set<int> unsure; // keys of a save that failed, perhaps after the file was replaced

    void load()
    {
        store = std::make_unique<FuzzStore>();
        store->setShared(true);
        changes.clear();
        takeBase();
    }

    void takeBase()
    {
        for (int key = 0; key < keyCount; ++key) {
            if (changes.count(key) == 0)
                base[key] = valueIn(*store, key);
        }
        if (changes.empty())
            unsure.clear();
    }

    // Back to what it was is no change.
    void note(int key, int value)
    {
        changes[key] = value;
        if (value == base[key] && unsure.count(key) == 0)
            changes.erase(key);
    }
};

class Sequence {
public:
    Sequence()
    {
        FuzzStore::removeUserFiles();
        for (Instance &instance : m_instances)
            instance.load();
    }

    void step(uint8_t operation, uint8_t argument)
    {
        Instance &instance = m_instances[operation % 2];
        int const key = argument % keyCount;
        switch (operation / 2 % 6) {
        case 0:
        case 1:
            instance.store->setIntValue(keyOf(key), ++m_lastValue);
            instance.note(key, m_lastValue);
            break;
        case 2:
            if (instance.store->find(keyOf(key))) {
                instance.store->deleteAllKeyBeginingWith(keyOf(key));
                instance.note(key, 0);
            }
            break;
        case 3:
            save(instance, argument);
            break;
        case 4:
            instance.store->reloadShared();
            instance.takeBase();
            break;
        default:
            instance.load();
        }
    }

    // Whether a load finds for each key one of the values that may be there.
    void check() const
    {
        FuzzStore const store;
        for (int key = 0; key < keyCount; ++key) {
            int const value = store.getIntValue(keyOf(key), 0);
            auto const possible = m_possible.find(key);
            require(possible == m_possible.end() ? value == 0 : possible->second.count(value) > 0,
                "a saved value is found", keyOf(key) + u'=' + QString::number(value));
        }
    }

private:
    void save(Instance &instance, uint8_t argument)
    {
        auto const kind = FaultyFiles::Kind(argument % 3);
        bool isEnded = false;
        {
            FaultyFiles faults(argument < 128 ? argument / 3 : -1, kind);
            instance.store->save();
            isEnded = faults.hasHappened && kind == FaultyFiles::Ended;
        }
        bool const isSaved = instance.store->saveStatus().state == PR_Preference::SaveStatus::Saved;
        for (auto const &[key, value] : instance.changes) {
            std::set<int> &possible = m_possible.try_emplace(key, std::set<int>{ 0 }).first->second;
            if (isSaved && !isEnded && instance.unsure.count(key) == 0)
                possible.clear();
            possible.insert(value);
            if (!isSaved)
                instance.unsure.insert(key);
        }
        if (isSaved)
            instance.changes.clear();
        instance.takeBase(); // one that fails late has taken over what others saved
        if (isEnded)
            instance.load(); // another run of the program
        check();
    }

    Instance m_instances[2];
    std::map<int, std::set<int>> m_possible; // by key
    int m_lastValue = 0;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size)
{
    static bool const defined = (FuzzStore::writeDefinitions(), true);
    require(defined, "there are definitions");
    Sequence sequence;
    for (size_t i = 0; i + 1 < size && i < 400; i += 2)
        sequence.step(data[i], data[i + 1]);
    sequence.check();
    return 0;
}
