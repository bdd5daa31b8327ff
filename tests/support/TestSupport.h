#ifndef TESTSUPPORT_H
#define TESTSUPPORT_H

#include "HostPlatform.h"
#include "PR_Preference.h"

#include <QDomDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

/*! Lets GoogleTest print texts. */
std::ostream &operator<<(std::ostream &stream, QString const &text);
void PrintTo(QString const &text, std::ostream *stream);

/*! A test with a host of its own: a temporary folder, an empty installation in it, three fonts, recorded reports.

    The host is put back afterwards. A report that the test has not taken fails it. */
class HostTest : public testing::Test {
protected:
    HostTest();
    ~HostTest() override;
    void TearDown() override;

    /*! A path below the temporary folder. */
    QString path(QString const &name) const;
    /*! Writes a file below the temporary folder, with its folders, and gives its path. */
    QString writeFile(QString const &name, QByteArray const &content) const;
    QByteArray readFile(QString const &name) const;
    /*! Writes a definitions file of the installation: \a categories go into its root element. */
    void define(QByteArray const &categories, QString const &file = QStringLiteral("prefs.xml")) const;
    /*! A category element around item elements. */
    static QByteArray category(QByteArray const &items, QByteArray const &text = "General");

    /*! The reports since the last call as "<action> <text>", the temporary folder shown as "$". */
    std::vector<std::string> takeReports();

    HostPlatform &host = HostPlatform::current();
    std::vector<HostReport> reports;

private:
    HostPlatform m_savedHost;
    QTemporaryDir m_folder;
};

/*! A store whose protected operations can be called. */
class TestStore : public PR_Preference {
public:
    explicit TestStore(QString const &name, bool local = false, bool loadNow = true);
    explicit TestStore(PR_Preference &other);

    using PR_Preference::clear;
    using PR_Preference::deleteKey;
    using PR_Preference::init;
    using PR_Preference::initPreferences;
};

/*! Counts the notices of a store. */
class SignalCounter {
public:
    explicit SignalCounter(PR_Preference &store);
    /*! The number of notices since the last call. */
    int take();

private:
    std::shared_ptr<int> m_count = std::make_shared<int>(0);
};

/*! The element of an XML text. */
QDomElement xmlElement(QByteArray const &xml);

#endif
