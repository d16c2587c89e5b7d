#include "Classes/Help.h"

#include "Views/Words.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QSysInfo>

namespace {

void say(QWidget &window, QMessageBox::Icon icon, const QString &text, const QString &more = {}) {
    auto *box = new QMessageBox(icon, window.windowTitle(), text, QMessageBox::Close, &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(more);
    box->open();
}

void takeReport(QProcess &program, QWidget &window) {
    const QByteArray report = program.readAllStandardOutput();
    // Its status says when something is wrong on this computer, which is what the report is about.
    const bool made = program.exitStatus() == QProcess::NormalExit && !report.isEmpty();
    if (made)
        QApplication::clipboard()->setText(QString::fromUtf8(report));
    say(window, made ? QMessageBox::Information : QMessageBox::Warning,
        words(made ? u"Diagnostics Copied"_ns : u"Diagnostics Failed"_ns));
}

} // namespace

void Help::showAbout(QWidget &window) {
    const QString version = words(u"Version"_ns, QStringLiteral(ZK_VERSION));
    const QString system = isolated(
        QStringLiteral("%1 · Linux %2 · Qt %3")
            .arg(QSysInfo::prettyProductName(), QSysInfo::kernelVersion(), QString::fromLatin1(qVersion())));
    auto *box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(window.windowTitle());
    box->setTextFormat(Qt::PlainText);
    box->setIconPixmap(QApplication::windowIcon().pixmap(64));
    box->setText(window.windowTitle());
    box->setInformativeText(
        QStringList{version, QStringLiteral("© 2026 Zelkor"), words(u"Licence"_ns), system}.join(
            QStringLiteral("\n\n")));
    box->setStandardButtons(QMessageBox::Close);
    box->open();
}

void Help::copyDiagnostics(QWidget &window) {
    auto *program = new QProcess(&window);
    QObject::connect(program, &QProcess::finished, &window, [program, &window] {
        takeReport(*program, window);
        program->deleteLater();
    });
    QObject::connect(program, &QProcess::errorOccurred, &window,
                     [program, &window](QProcess::ProcessError error) {
                         if (error != QProcess::FailedToStart)
                             return;
                         takeReport(*program, window);
                         program->deleteLater();
                     });
    const QDir programs = QFileInfo(QCoreApplication::applicationFilePath()).dir();
    program->start(programs.filePath(QStringLiteral("zkprinter")), {QStringLiteral("diagnose")});
}
