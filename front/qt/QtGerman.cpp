#include "front/qt/QtGerman.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace zd::qt {

bool speakGerman(QCoreApplication& app) {
    auto* translator = new QTranslator(&app);
    if (!translator->load(QStringLiteral("qtbase_de"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    return QCoreApplication::installTranslator(translator);
}

}  // namespace zd::qt
