#ifndef BENCHSUPPORT_H
#define BENCHSUPPORT_H

#include "PR_Preference.h"

#include <QTemporaryDir>

#include <memory>

/*! An object with a signal. */
class Emitter : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void changed();
};

/*! A main store on the shipped definition files, with an empty user file of its own. */
class BenchStore {
public:
    BenchStore();

    PR_Preference *operator->() const { return m_store.get(); }
    PR_Preference &operator*() const { return *m_store; }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PR_Preference> m_store;
};

#endif
