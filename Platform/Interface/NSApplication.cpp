#include "Platform/Interface/NSApplication.h"

#include "Platform/Foundation/System/Localization.h"
#include "Platform/Interface/ModalSession.h"
#include "Platform/Interface/RunLoopBridge.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

NSApplication *theApplication = nullptr;

/// Shows Qt's own texts, those of standard buttons and context menus, in that language, if Qt has it, and
/// lays windows out in its direction.
void speak(const QLocale &language) {
    QGuiApplication::setLayoutDirection(language.textDirection());
    auto *const words = new QTranslator(qApp);
    if (words->load(language, QStringLiteral("qtbase"), QStringLiteral("_"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(words);
}

} // namespace

NSApplication::NSApplication()
    : modal_(std::make_unique<ModalSession>()),
      bridge_(std::make_unique<RunLoopBridge>([this] { return runLoopMode(); })) {
    Q_ASSERT(!theApplication);
    theApplication = this;
    QObject::connect(modal_.get(), &ModalSession::modeChanged, bridge_.get(), [this] { bridge_->wake(); });
    const std::string language = NSLocalizationLanguage();
    if (language != "en")
        speak(QLocale(QString::fromStdString(language)));
}

NSApplication::~NSApplication() {
    theApplication = nullptr;
}

NSApplication *NSApplication::sharedApplication() {
    return theApplication;
}

void NSApplication::runModalForWindow(QWidget &window) {
    modal_->run(window);
}

void NSApplication::stopModal() {
    modal_->stop();
}

bool NSApplication::isRunningModal() const {
    return modal_->isRunning();
}

NSRunLoopMode NSApplication::runLoopMode() const {
    return isRunningModal() ? NSModalPanelRunLoopMode : NSDefaultRunLoopMode;
}

int NSApplication::run() {
    if (delegate_) {
        delegate_->applicationDidFinishLaunching();
        QApplication::setQuitOnLastWindowClosed(delegate_->applicationShouldTerminateAfterLastWindowClosed());
    }
    const int status = QApplication::exec();
    if (delegate_)
        delegate_->applicationWillTerminate();
    return status;
}
