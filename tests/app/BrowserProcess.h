#pragma once

// Runs the parameter browser as a program, the way people and scripts do, and collects what it says.

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace vorn {
namespace test {

struct BrowserRun
{
    int exitCode = -1;
    QString out;
    QString err;

    // The lines on stderr, without Qt's own notes that a headless platform cannot do something.
    QStringList errorLines() const
    {
        QStringList lines;
        for (const QString& line : err.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            if (line.startsWith(QLatin1String("parameter-browser:")))
                lines << line;
        return lines;
    }
};

// Runs the browser offscreen with a settings folder of its own, so that nothing a person chose in
// the window changes the outcome, and nothing the tests do changes what a person sees.
inline BrowserRun runBrowser(const QStringList& arguments, int timeoutMs = 60000)
{
    static QTemporaryDir settings;
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), settings.path());
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(VORN_BROWSER_EXECUTABLE), arguments);
    BrowserRun run;
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "parameter-browser did not finish: "
                      << arguments.join(QLatin1Char(' ')).toStdString();
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

} // namespace test
} // namespace vorn
