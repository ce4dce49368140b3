// Any bytes at all as the best list's file: the start must come through,
// leave at most five entries, and a mark of 0 or more.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "best/modBeste.h"
#include "game/Spiel.h"
#include "ui/drive/HeadlessPlatform.h"
#include "ui/model/VirtualLoop.h"

namespace {

// The list file comes from the fuzzer; nothing is written anywhere.
class FuzzPlatform : public zd::drive::HeadlessPlatform {
public:
    FuzzPlatform(std::ostream& out, std::string bytes)
        : HeadlessPlatform(out, "/nonexistent", "/nonexistent-root", false), bytes_(std::move(bytes)) {}
    zd::sys::PathState pathState(const std::string&) override { return zd::sys::PathState::Exists; }
    std::optional<std::string> readLines(const std::string&, int, int&) override { return bytes_; }
    bool replaceFile(const std::string&, const std::string&, int&) override { return true; }

private:
    std::string bytes_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ostringstream out;
    FuzzPlatform platform(out, std::string(reinterpret_cast<const char*>(data), size));
    zd::ui::VirtualLoop loop;
    zd::Programm p(loop, platform, 15360, 11520);
    loop.attach(p.tk);
    loop.modalStep = [&p] { return p.tk.click(p.frmMsgOk().lblOk); };
    zd::richteEin(p);
    p.tk.dispatch([&p] { zd::Main(p); });
    if (!p.frmSpielfeld().visible() || p.frmBeste().lstPunkte.ListCount() > 5 || p.g.Bestmarke < 0) {
        __builtin_trap();
    }
    return 0;
}
