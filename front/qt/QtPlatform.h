#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "system/LocalFiles.h"

class QSoundEffect;
class QString;

namespace zd::qt {

// The folder of the program's pictures, sounds and documents for a program
// in `programFolder`: the installed data folder where there is one, else
// the program's own folder, as in a build.
QString dataFolderOf(const QString& programFolder);

// The platform of the real program where the system itself offers no
// sound and no document viewer: the system's data folder and files, the
// folder of the program's files, Qt Multimedia for sound and the desktop
// for documents.
class QtPlatform : public sys::LocalFiles {
public:
    QtPlatform();
    ~QtPlatform() override;
    QtPlatform(const QtPlatform&) = delete;
    QtPlatform& operator=(const QtPlatform&) = delete;

    std::string programFolder() override;
    int waveOutputCount() override;
    void playWave(const std::string& path) override;
    void openDocument(const std::string& path) override;

private:
    // A few players per sound file, so that a sound asked for again while
    // it still plays starts afresh beside it instead of cutting it off.
    std::map<std::string, std::vector<std::unique_ptr<QSoundEffect>>> sounds_;
};

}  // namespace zd::qt
