#ifndef APPLICATION_H
#define APPLICATION_H

#include <QCoreApplication>
#include <QTranslator>

#include <memory>

/*! The Qt application of the program, which speaks the user's language. One for a user interface takes as long to make
   as all else that most verbs do, so that it is made when fonts are asked for. */
class Application {
public:
    /*! Qt is not shown the arguments: it would take those that it knows for itself. */
    explicit Application(char **argv);
    ~Application();

    /*! The fonts of this machine, which also become those of HostPlatform. */
    static QStringList fonts();

private:
    Q_DISABLE_COPY_MOVE(Application)

    void start(bool withFonts);

    char **m_argv;
    int m_argc = 1;
    std::unique_ptr<QCoreApplication> m_application;
    QTranslator m_translator;
};

#endif
