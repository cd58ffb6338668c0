#include "SceneFixture.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "scene/Traverser.h"

using namespace Velun;
using namespace SceneTest;
using Dorvan::SharedPtr;

namespace {

typedef std::map<std::string, Traverser::StatusResult> Answers;

// Reads "A:skip A2:stop" as answers per node name.
std::vector<std::pair<std::string, Traverser::StatusResult>> parse(std::string text) {
    std::vector<std::pair<std::string, Traverser::StatusResult>> answers;
    std::replace(text.begin(), text.end(), ':', ' ');
    std::istringstream words(text);
    for (std::string name, result; words >> name >> result;)
        answers.emplace_back(name, result == "skip"   ? Traverser::ResultSkip
                                   : result == "stop" ? Traverser::ResultStop
                                                      : Traverser::ResultAccept);
    return answers;
}

// Writes each call as "name:direction", e.g. "A:down", and answers as told per name.
class Recorder : public Traverser::Handler {
public:
    void reset(Node& start) override { mLog << "reset(" << start.getName() << ") "; }
    Traverser::StatusResult handle(Node& node, Traverser::Direction direction, Node* previous) override {
        static char const* names[] = {"up", "down", "next", "prev"};
        mLog << node.getName() << ":" << names[direction] << " ";
        mPrevious.push_back(previous ? previous->getName() : "-");
        Answers::const_iterator it = mAnswers.find(node.getName());
        return it == mAnswers.end() ? Traverser::ResultContinue : it->second;
    }
    std::ostringstream mLog;
    std::vector<std::string> mPrevious;
    Answers mAnswers;
};

class NameFilter : public Traverser::Filter {
public:
    NameFilter(std::string const& name, Traverser::StatusResult answer) : mName(name), mAnswer(answer) {}
    Traverser::StatusResult filter(Node& node) override {
        return node.getName() == mName ? mAnswer : Traverser::ResultContinue;
    }
    std::string mName;
    Traverser::StatusResult mAnswer;
};

// G { A { A1, A2 }, B }, and a lonely group.
class TraverserTest : public EngineTest {
protected:
    TraverserTest() {
        chain({&g, &a, &a1});
        chain({&a, &a2});
        chain({&g, &b});
    }
    StartedEngine started;
    Branch g{"G"}, a{"A"}, lonely{"lonely"};
    BoxLeaf a1{"A1"}, a2{"A2"}, b{"B"};
};

TEST_F(TraverserTest, DepthFirstWalkTellsThePreviousNodeAndFollowsTheAnswersFiltersAndLimits) {
    Traverser walk(g);
    SharedPtr<Recorder> recorder(new Recorder());
    walk.addHandler(recorder);
    EXPECT_EQ(walk.walk(0, false), nullptr);
    EXPECT_EQ(recorder->mLog.str(), "reset(G) G:down A:down A1:down A2:next A:up B:next G:up ");
    EXPECT_EQ(recorder->mPrevious, (std::vector<std::string>{"-", "G", "A", "A1", "A2", "A", "B"}));
    EXPECT_EQ(walk.getMaxDepth(), 2);

    walk.reset(false);
    recorder->mAnswers = {{"A2", Traverser::ResultStop}};
    EXPECT_EQ(walk.walk(0, false), &a2);
    EXPECT_EQ(walk.getCurrentDepth(), 2);
    EXPECT_EQ(walk.getCurrentPos(), 1);

    // The answers, the filters and the limits, each on a fresh walk.
    struct Walk {
        char const *name, *answers, *filters;  // filters are asked in this order
        char const* log;
        Node* ended = nullptr;
        int maxDepth = 0;
        bool reverse = false, skipRoot = false;
        Node* start = nullptr;  // G
    };
    Walk const walks[] = {
        {"reverse", "", "", "reset(G) G:down B:down A:prev A2:down A1:prev A:up G:up ", nullptr, 0, true},
        {"skip leaves out the subtree", "A:skip", "", "reset(G) G:down A:down B:next G:up "},
        {"stop ends the walk", "A1:stop", "", "reset(G) G:down A:down A1:down ", &a1},
        {"refused start", "G:skip", "", "reset(G) G:down ", &g},
        {"filters decide before the cursor enters", "", "A:skip", "reset(G) G:down B:down G:up "},
        {"an accepting filter ends the question", "", "A1:accept A1:skip A2:skip",
         "reset(G) G:down A:down A1:down A:up B:next G:up "},
        {"all children filtered, no up", "", "A1:skip A2:skip", "reset(G) G:down A:down B:next G:up "},
        {"all filtered, reverse", "", "A1:skip A2:skip", "reset(G) G:down B:down A:prev G:up ", nullptr, 0,
         true},
        {"max depth handles but does not enter", "", "", "reset(G) G:down A:down B:next G:up ", nullptr, 1},
        {"skipped root only on the way up", "", "", "reset(G) A:down A1:down A2:next A:up B:next G:up ",
         nullptr, 0, false, true},
        {"empty group", "", "", "reset(lonely) lonely:down ", nullptr, 0, false, false, &lonely},
        {"empty group, skipped root", "", "", "reset(lonely) ", nullptr, 0, false, true, &lonely},
        {"leaf, skipped root", "", "", "reset(B) ", nullptr, 0, false, true, &b},
    };
    for (Walk const& w : walks) {
        SCOPED_TRACE(w.name);
        Traverser walk(w.start ? *w.start : g);
        SharedPtr<Recorder> recorder(new Recorder());
        for (auto const& answer : parse(w.answers))
            recorder->mAnswers.insert(answer);
        for (auto const& answer : parse(w.filters))
            walk.addFilter(SharedPtr<Traverser::Filter>(new NameFilter(answer.first, answer.second)));
        walk.addHandler(recorder);
        walk.setSkipRoot(w.skipRoot);
        EXPECT_EQ(walk.walk(w.maxDepth, w.reverse), w.ended);
        EXPECT_EQ(recorder->mLog.str(), w.log);
    }
}

}  // namespace
