#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <ostream>
#include <utility>

std::ostream &operator<<(std::ostream &stream, QString const &text)
{
    return stream << '"' << text.toStdString() << '"';
}

void PrintTo(QString const &text, std::ostream *stream)
{
    *stream << text;
}

HostTest::HostTest()
    : m_savedHost(host)
{
    host = HostPlatform();
    host.installFolder = path(QStringLiteral("install"));
    host.fonts = QStringList{ QStringLiteral("Arial"), QStringLiteral("Courier"), QStringLiteral("Times") };
    host.report = [this](HostReport const &report) { reports.push_back(report); };
}

HostTest::~HostTest()
{
    host = m_savedHost;
}

void HostTest::TearDown()
{
    for (std::string const &report : takeReports())
        ADD_FAILURE() << "unexpected report: " << report;
}

QString HostTest::path(QString const &name) const
{
    return m_folder.filePath(name);
}

QString HostTest::writeFile(QString const &name, QByteArray const &content) const
{
    QString const file = path(name);
    QDir().mkpath(QFileInfo(file).path());
    QFile output(file);
    EXPECT_TRUE(output.open(QIODevice::WriteOnly) && output.write(content) == content.size());
    return file;
}

QByteArray HostTest::readFile(QString const &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void HostTest::define(QByteArray const &categories, QString const &file) const
{
    writeFile(QStringLiteral("install/resources/") + file, "<preferences>" + categories + "</preferences>");
}

QByteArray HostTest::category(QByteArray const &items, QByteArray const &text)
{
    return "<category id=\"" + text + "\">" + items + "</category>";
}

std::vector<std::string> HostTest::takeReports()
{
    std::vector<std::string> texts;
    for (HostReport const &report : std::exchange(reports, {})) {
        QString text = report.text;
        texts.push_back(
            std::to_string(report.action) + ' ' + text.replace(m_folder.path(), QStringLiteral("$")).toStdString());
    }
    return texts;
}

TestStore::TestStore(QString const &name, bool local, bool loadNow)
    : PR_Preference(name, local, loadNow)
{
}

TestStore::TestStore(PR_Preference &other)
    : PR_Preference(other)
{
}

SignalCounter::SignalCounter(PR_Preference &store)
{
    QObject::connect(&store, &PR_Preference::preferenceChanged, [count = m_count] { ++*count; });
}

int SignalCounter::take()
{
    return std::exchange(*m_count, 0);
}

QDomElement xmlElement(QByteArray const &xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml)) << xml.constData();
    return document.documentElement();
}
