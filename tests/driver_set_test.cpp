// The driver's `set` against values the program can never hold: a script
// error naming the line, never a run on with a state that cannot be.
#include <filesystem>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "front/drive/Driver.h"
#include "front/drive/PlayerBot.h"

namespace zd::test {

using drive::freshFolder;
namespace {

struct Outcome {
    int code;
    std::string out;
    std::string err;
};

Outcome drive(const std::string& script) {
    const std::string root = freshFolder("zd-driver-set");
    drive::HarnessOptions options;
    options.programDir = ZD_PROGRAM_DIR;
    options.driveRoot = root;
    options.dice = std::vector<int>(12, 6);
    std::istringstream in(script);
    std::ostringstream out;
    std::ostringstream err;
    int code = 0;
    {
        drive::Driver driver(options, in, out, err);
        code = driver.run();
    }
    std::filesystem::remove_all(root);
    return {code, out.str(), err.str()};
}

// Into the spin of Andrea, after the human player's first placement.
const std::string kDuringASpin =
    "start\n"
    "click frmSpielfeld.imgNeu\n"
    "click frmSpielfeld.imgWuerfeln\n"
    "wait 700\n"
    "click frmSpielfeld.imgAuswahl(3)\n"
    "wait 100\n";

TEST(DriverSet, AnIndexOutsideItsArraysIsAScriptErrorNotACrash) {
    for (const char* bad : {"AktiverComputer = 5", "AktiverComputer = -1", "EintragPlatz = 5",
                            "EintragPlatz = -2", "WurfNummer = 40000"}) {
        SCOPED_TRACE(bad);
        const Outcome run = drive(kDuringASpin + "set " + bad + "\nwait 1000\n");
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err, std::string("error: line 7: cannot set ") + bad + "\n");
        EXPECT_EQ(run.out, "");
    }
}

TEST(DriverSet, TheEndsOfEachRangeAreTaken) {
    const Outcome run =
        drive(kDuringASpin +
              "set AktiverComputer = 3\n"
              "set EintragPlatz = -1\n"
              "set EintragPlatz = 4\n"
              "set NeuerEintrag = True\n"
              "wait 500\n"
              "expect frmSpielfeld.lblVictoria.Caption = Victoria würfelt eine 6\n");
    EXPECT_EQ(run.code, 0) << run.out << run.err;
}

TEST(DriverSet, AnEntryBeingMadeKeepsItsPlace) {
    // The program never holds an entry without its place; the list window
    // would have no box to take the name.
    Outcome run = drive("start\nset NeuerEintrag = True\n");
    EXPECT_EQ(run.code, 0) << run.err;  // the place is 0 at start
    run = drive("start\nset EintragPlatz = -1\nset NeuerEintrag = True\n");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "error: line 3: cannot set NeuerEintrag = True\n");
    run = drive("start\nset NeuerEintrag = True\nset EintragPlatz = -1\nprint NeuerEintrag\n");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "error: line 3: cannot set EintragPlatz = -1\n");
}

}  // namespace
}  // namespace zd::test
