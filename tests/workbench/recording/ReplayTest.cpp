// Sessions of a person with the startup dialog, at random and through its windows alone; the recorded script of each is
// run in a process of its own and must give the same documents.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/Locations.h"
#include "tests/workbench/Files.h"
#include "tests/workbench/recording/RandomSession.h"

namespace recordingtest {
namespace {

// Names that begin alike, are numbers or hold signs of the notation, and names in other scripts.
constexpr const char* People =
    "2,a,A: b,\"18-25\",ab,Größe,年齢,\"q\"\"|x\",w\n"
    "1,p,x,1,10,0.5,2,1,1\n1,2,x y,2,20,1.5,2,1,0.5\n2,10,x,1,30,2.5,3,2,2\n2,18-25,\"a: b\",3,40,NA,1,2,1\n"
    "1,p,x,2,50,0.25,5,3,\n1,P q,\"x | 1 y\",1,60,8,8,1,3\n3,2,X,3,70,9,13,2,1\n2,missing,x,1,80,3,21,3,1\n"
    "2,p,\"\"\"x\"\"\",2,90,3.5,2,,1\n3,Ωμέγα,x,1,15,4.123456789,1,1,0.25\n1,2,x y,2,25,4.5,1,2,1\n1,,x,,35,5,1,3,2\n"
    "2,10,Missing,1,45,6,NA,1,1\n2,18-25,x,3,NA,7,4,1,-1\n1,p,x,3,55,2,6,2,1\n3,日本語のとても長い名前,x,1,65,1,7,1,"
    "1\n";
// Equal labels, labels that look like numbers, and long ones.
constexpr const char* Labels =
    "variable,value,label,description\n\"18-25\",1,yes,the first\n\"18-25\",2,yes,\n\"18-25\",3,2,\n"
    "2,1,Never married and long,\n2,2,Never married and longer,\n2,3,\"a, b\",\n";
constexpr const char* Others = "u,v,Größe\nk,1,3\nl,2,4\nk,3,5\nm,4,NA\nk,5,7\n";

int NumberIn(const char* variable, int otherwise) {
    const char* number = std::getenv(variable);
    return number == nullptr ? otherwise : std::atoi(number);
}

TEST(Replay, RecordedScriptsGiveTheDocumentsOfTheirSessions) {
    const TemporaryFolder folder;
    const Texts files{folder.Put("people.csv", People), folder.Put("labels.csv", Labels),
                      folder.Put("others.csv", Others)};
    const int sessions = NumberIn("QUILLARA_SESSIONS", 1000);
    const int first = NumberIn("QUILLARA_FIRST_SESSION", 1);
    for (int number = 1; number <= sessions; ++number) {
        const int seed = first + number - 1;
        RandomSession session(static_cast<unsigned>(seed), files);
        session.Run(10 + seed % 40);
        folder.Put(std::to_string(number) + ".py", session.Script());
        folder.Put(std::to_string(number) + ".json", session.Documents());
        folder.Put(std::to_string(number) + ".txt", "seed " + std::to_string(seed) + '\n' + session.Log);
    }
    if (!std::filesystem::exists(testing_locations::Library("python/quillara"))) {
        GTEST_SKIP() << "this build has no Python package";
    }
    const std::string replay = testing_locations::Program() + " run " + testing_locations::Replayer() + " " +
                               folder.Path("") + " " + std::to_string(sessions);
    EXPECT_EQ(std::system(replay.c_str()), 0);
}

}  // namespace
}  // namespace recordingtest
