#include "system/Dateien.h"

#include <filesystem>

namespace zd::sys {

bool ExistiertDatei(Platform& platform, const std::string& name) {
    if (name.empty()) return false;
    return platform.pathState(name) != PathState::NotFound;
}

std::string PfadMitTrenner(const std::string& pfad) {
    const char trenner = static_cast<char>(std::filesystem::path::preferred_separator);
    if (!pfad.empty() && pfad.back() == trenner) return pfad;
    return pfad + trenner;
}

}  // namespace zd::sys
