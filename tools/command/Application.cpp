#include "Application.h"

#include "HostPlatform.h"
#include "oswUtil.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {
Application *current = nullptr;

// The library's messages in the first language of the user for which they are there; the program's own are English.
void loadTranslation(QTranslator &translator)
{
    QLocale const user = QLocale::system();
    if (user.language() == QLocale::C) // whatever LANGUAGE says: scripts ask for English so
        return;
    QString const folder = oswUtil::ZeltDir(false) + "/translations"_L1;
    for (QString const &language : user.uiLanguages()) {
        if (QLocale(language).language() == QLocale::English
            || translator.load("brivantpreference_"_L1 + QString(language).replace(u'-', u'_'), folder))
            return;
    }
}
} // namespace

Application::Application(char **argv)
    : m_argv(argv)
{
    current = this;
    start(false);
    loadTranslation(m_translator);
    QCoreApplication::installTranslator(&m_translator);
}

Application::~Application()
{
    current = nullptr;
}

void Application::start(bool withFonts)
{
    m_application.reset();
    if (!withFonts) {
        m_application = std::make_unique<QCoreApplication>(m_argc, m_argv);
        return;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // it runs without a display
    m_application = std::make_unique<QGuiApplication>(m_argc, m_argv);
}

QStringList Application::fonts()
{
    auto &fonts = HostPlatform::current().fonts;
    if (!fonts) {
        current->start(true);
        QCoreApplication::installTranslator(&current->m_translator);
        fonts = QFontDatabase::families();
    }
    return *fonts;
}
