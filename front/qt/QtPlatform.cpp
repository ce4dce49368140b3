#include "front/qt/QtPlatform.h"

#include <QAudioDevice>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>

namespace zd::qt {

namespace {

constexpr std::size_t kPlayersPerSound = 3;

}  // namespace

QString dataFolderOf(const QString& programFolder) {
    const QString installed =
        QDir::cleanPath(programFolder + QLatin1Char('/') + QStringLiteral(ZD_DATA_FROM_PROGRAM));
    return QFileInfo(installed).isDir() ? installed : programFolder;
}

QtPlatform::QtPlatform() = default;

QtPlatform::~QtPlatform() = default;

std::string QtPlatform::programFolder() {
    return QDir::toNativeSeparators(dataFolderOf(QCoreApplication::applicationDirPath()))
        .toStdString();
}

int QtPlatform::waveOutputCount() {
    // Asked anew each time: a headset plugged in later counts.
    return static_cast<int>(QMediaDevices::audioOutputs().size());
}

void QtPlatform::playWave(const std::string& path) {
    const QString file = QString::fromStdString(path);
    if (!QFileInfo(file).isFile()) return;
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull()) return;

    auto& players = sounds_[path];
    QSoundEffect* idle = nullptr;
    for (const auto& player : players) {
        if (!player->isPlaying() && player->status() != QSoundEffect::Error) {
            idle = player.get();
            break;
        }
    }
    if (!idle) {
        if (players.size() >= kPlayersPerSound) {
            // All busy: reuse one that failed, else stay silent rather
            // than cut a sound off.
            for (auto& player : players) {
                if (player->status() == QSoundEffect::Error) {
                    player = std::make_unique<QSoundEffect>();
                    player->setSource(QUrl::fromLocalFile(file));
                    idle = player.get();
                    break;
                }
            }
            if (!idle) return;
        } else {
            players.push_back(std::make_unique<QSoundEffect>());
            idle = players.back().get();
            idle->setSource(QUrl::fromLocalFile(file));
        }
    }
    // The output the system uses now, which may have changed since.
    if (idle->audioDevice() != device) idle->setAudioDevice(device);
    idle->play();
}

void QtPlatform::openDocument(const std::string& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

}  // namespace zd::qt
