#include "SceneFixture.h"

#include <sstream>
#include <vector>

#include "scene/Traverser.h"

using Dorvan::SharedPtr;
using SceneTest::BoxLeaf;
using Velun::Branch;
using Velun::Node;
using Velun::Traverser;

namespace {

// Writes each call as "name:direction", e.g. "A:down"; answers given per name.
class Recorder : public Traverser::Handler {
public:
    void reset(Node& start) override { mLog << "reset(" << start.getName() << ") "; }
    Traverser::StatusResult handle(Node& node, Traverser::Direction direction, Node* previous) override {
        static char const* names[] = {"up", "down", "next", "prev"};
        mLog << node.getName() << ":" << names[direction] << " ";
        mPrevious.push_back(previous ? previous->getName() : "-");
        return node.getName() == mSkip   ? Traverser::ResultSkip
               : node.getName() == mStop ? Traverser::ResultStop
                                         : Traverser::ResultContinue;
    }
    std::string log() const { return mLog.str(); }

    std::ostringstream mLog;
    std::vector<std::string> mPrevious;
    std::string mSkip;
    std::string mStop;
};

class NameFilter : public Traverser::Filter {
public:
    NameFilter(std::string const& name, Traverser::StatusResult answer)
        : mName(name), mAnswer(answer), mCalls(0) {}
    Traverser::StatusResult filter(Node& node) override {
        ++mCalls;
        return node.getName() == mName ? mAnswer : Traverser::ResultContinue;
    }
    std::string mName;
    Traverser::StatusResult mAnswer;
    int mCalls;
};

// G { A { A1, A2 }, B }
class TraverserTest : public SceneTest::EngineTest {
protected:
    void SetUp() override {
        SceneTest::EngineTest::SetUp();
        g.reset(new Branch("G"));
        a.reset(new Branch("A"));
        a1.reset(new BoxLeaf("A1"));
        a2.reset(new BoxLeaf("A2"));
        b.reset(new BoxLeaf("B"));
        g->attachChild(*a);
        a->attachChild(*a1);
        a->attachChild(*a2);
        g->attachChild(*b);
        traverser.reset(new Traverser(*g));
        recorder = SharedPtr<Recorder>(new Recorder());
        traverser->addHandler(recorder);
    }
    void TearDown() override {
        traverser.reset();
        recorder.release();
        b.reset();
        a2.reset();
        a1.reset();
        a.reset();
        g.reset();
        SceneTest::EngineTest::TearDown();
    }

    std::unique_ptr<Branch> g, a;
    std::unique_ptr<BoxLeaf> a1, a2, b;
    std::unique_ptr<Traverser> traverser;
    SharedPtr<Recorder> recorder;
};

TEST_F(TraverserTest, DepthFirstWithAClosingEvent) {
    EXPECT_EQ(traverser->walk(0, false), nullptr);
    EXPECT_EQ(recorder->log(), "reset(G) G:down A:down A1:down A2:next A:up B:next G:up ");
    EXPECT_EQ(recorder->mPrevious, (std::vector<std::string>{"-", "G", "A", "A1", "A2", "A", "B"}));
    EXPECT_EQ(traverser->getCurrentNode(), g.get());
    EXPECT_EQ(traverser->getCurrentDepth(), 0);
    EXPECT_EQ(traverser->getMaxDepth(), 2);
    EXPECT_EQ(traverser->getNodeCount(), 0);
}

TEST_F(TraverserTest, ReverseWalkRunsFromTheLastChild) {
    traverser->walk(0, true);
    EXPECT_EQ(recorder->log(), "reset(G) G:down B:down A:prev A2:down A1:prev A:up G:up ");
}

TEST_F(TraverserTest, SkipLeavesOutTheSubtreeAndStopEndsTheWalk) {
    recorder->mSkip = "A";
    traverser->walk(0, false);
    EXPECT_EQ(recorder->log(), "reset(G) G:down A:down B:next G:up ");

    traverser->reset(false);
    recorder->mLog.str("");
    recorder->mSkip = "";
    recorder->mStop = "A2";
    EXPECT_EQ(traverser->walk(0, false), a2.get());
    EXPECT_EQ(traverser->getCurrentNode(), a2.get());
    EXPECT_EQ(traverser->getCurrentDepth(), 2);
    EXPECT_EQ(traverser->getCurrentPos(), 1);

    // A refused start node ends the walk at once.
    traverser->reset(false);
    recorder->mLog.str("");
    recorder->mSkip = "G";
    EXPECT_EQ(traverser->walk(0, false), g.get());
    EXPECT_EQ(recorder->log(), "reset(G) G:down ");
}

TEST_F(TraverserTest, FiltersDecideBeforeTheCursorEnters) {
    SharedPtr<NameFilter> skipA(new NameFilter("A", Traverser::ResultSkip));
    traverser->addFilter(skipA);
    traverser->walk(0, false);
    EXPECT_EQ(recorder->log(), "reset(G) G:down B:down G:up ");
    EXPECT_EQ(traverser->getFilter(0).get(), skipA.get());
    EXPECT_EQ(traverser->getFilterList().size(), 1u);

    // An accepting filter ends the question before a later one could skip.
    Traverser second(*g);
    SharedPtr<Recorder> log(new Recorder());
    second.addHandler(log);
    SharedPtr<NameFilter> accept(new NameFilter("A1", Traverser::ResultAccept));
    SharedPtr<NameFilter> skipLeaves(new NameFilter("A1", Traverser::ResultSkip));
    SharedPtr<NameFilter> skipA2(new NameFilter("A2", Traverser::ResultSkip));
    second.addFilter(accept);
    second.addFilter(skipLeaves);
    second.addFilter(skipA2);
    second.walk(0, false);
    EXPECT_EQ(log->log(), "reset(G) G:down A:down A1:down A:up B:next G:up ");
}

TEST_F(TraverserTest, GroupWithAllChildrenFilteredGetsNoClosingEvent) {
    SharedPtr<NameFilter> skipA1(new NameFilter("A1", Traverser::ResultSkip));
    SharedPtr<NameFilter> skipA2(new NameFilter("A2", Traverser::ResultSkip));
    traverser->addFilter(skipA1);
    traverser->addFilter(skipA2);
    traverser->walk(0, false);
    EXPECT_EQ(recorder->log(), "reset(G) G:down A:down B:next G:up ");

    traverser->reset(false);
    traverser->moveDown(0);
    EXPECT_EQ(traverser->moveDown(-1), nullptr);
    EXPECT_EQ(traverser->getCurrentNode(), a.get());
}

TEST_F(TraverserTest, SkipRootHandlesTheRootOnlyOnTheWayUp) {
    traverser->setSkipRoot(true);
    EXPECT_TRUE(traverser->doSkipRoot());
    traverser->walk(0, false);
    EXPECT_EQ(recorder->log(), "reset(G) A:down A1:down A2:next A:up B:next G:up ");

    Branch lonely("lonely");
    Traverser empty(lonely);
    SharedPtr<Recorder> log(new Recorder());
    empty.addHandler(log);
    EXPECT_EQ(empty.walk(0, false), nullptr);
    EXPECT_EQ(log->log(), "reset(lonely) lonely:down ");
    log->mLog.str("");
    empty.setSkipRoot(true);
    empty.walk(0, false);
    EXPECT_EQ(log->log(), "reset(lonely) ");

    Traverser onLeaf(*b);
    SharedPtr<Recorder> leafLog(new Recorder());
    onLeaf.addHandler(leafLog);
    onLeaf.setSkipRoot(true);
    EXPECT_EQ(onLeaf.walk(0, false), nullptr);
    EXPECT_EQ(leafLog->log(), "reset(B) ");
}

TEST_F(TraverserTest, MaxDepthHandlesButDoesNotEnter) {
    traverser->walk(1, false);
    EXPECT_EQ(recorder->log(), "reset(G) G:down A:down B:next G:up ");
}

}  // namespace
