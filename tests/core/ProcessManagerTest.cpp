#include <functional>
#include <memory>
#include <stdexcept>

#include "core/ProcessManager.h"
#include "support/Engine.h"

using namespace Velun;
typedef std::vector<std::string> Trace;

namespace {

// A subsystem whose one process writes its name into a shared trace, keeps the pass's
// time and calls an optional action.
class TraceSubsystem : public Subsystem, public Process {
public:
    TraceSubsystem(int id, std::string name, Trace* trace) : mName(name), mTrace(trace) {
        setSubsystemId(id);
        mProcesses.push_back(this);
    }
    std::vector<Process*>* getProcessList() override { return &mProcesses; }
    int run(std::int64_t time) override {
        mTrace->push_back(mName);
        mStamps.push_back(time);
        if (mAction)
            mAction();
        return 0;
    }
    std::string mName;
    Trace* mTrace;
    std::function<void()> mAction;
    std::vector<Process*> mProcesses;
    std::vector<std::int64_t> mStamps;
};

// A private ProcessManager; the engine is started so that passes can read its clock.
class ProcessManagerTest : public VelunTest::EngineTest {
protected:
    TraceSubsystem& add(int id, const std::string& name,
                        Subsystem::UpdateMode mode = Subsystem::UpdateAlways) {
        mSubsystems.emplace_back(new TraceSubsystem(id, name, &mTrace));
        mManager.registerSubsystem(*mSubsystems.back(), -1);
        mSubsystems.back()->setUpdateMode(mode);
        return *mSubsystems.back();
    }

    ProcessManager mManager;
    Trace mTrace;
    std::vector<std::unique_ptr<TraceSubsystem>> mSubsystems;
};

}  // namespace

TEST_F(ProcessManagerTest, StopInsideTheLoopLetsThePassFinishAndABlockingStopIsRefused) {
    TraceSubsystem& a = add(100, "a");
    add(101, "b");
    TraceSubsystem& c = add(102, "c");
    int passes = 0;
    a.mAction = [&] {
        EXPECT_TRUE(mManager.isRunning());
        EXPECT_EQ(-1, mManager.stop(true));
        if (++passes == 3) {
            EXPECT_EQ(0, mManager.stop(false));
        }
    };
    c.mAction = [&] { EXPECT_TRUE(mManager.isRunning()); };
    EXPECT_EQ(0, mManager.run(true));
    EXPECT_EQ((Trace{"a", "b", "c", "a", "b", "c", "a", "b", "c"}), mTrace);
    EXPECT_FALSE(mManager.isRunning());
}

TEST_F(ProcessManagerTest, UpdateModesInAndOutOfTheLoop) {
    add(100, "manual", Subsystem::UpdateManual);
    add(101, "always");
    add(102, "request", Subsystem::UpdateOnRequest);
    TraceSubsystem& loop = add(103, "loop", Subsystem::UpdateInLoop);
    mManager.update(true);
    EXPECT_EQ((Trace{"always", "request"}), mTrace);

    mTrace.clear();
    loop.mAction = [&] {
        if (mTrace.size() == 2) {
            mManager.update(true);
            mManager.stop(false);
        }
    };
    mManager.run(true);
    EXPECT_EQ((Trace{"always", "loop", "request"}), mTrace);
}

TEST_F(ProcessManagerTest, RegistrationOrderAndRefusals) {
    EXPECT_EQ(100, mManager.createSubsystemId());
    EXPECT_EQ(101, mManager.createSubsystemId());
    TraceSubsystem negative(-3, "", &mTrace), a(10, "", &mTrace), b(11, "", &mTrace), c(12, "", &mTrace),
        d(13, "", &mTrace), e(14, "", &mTrace);
    EXPECT_EQ(-1, mManager.registerSubsystem(negative, -1));
    EXPECT_EQ(0, mManager.registerSubsystem(a, -1));
    EXPECT_EQ(1, mManager.registerSubsystem(b, 7));
    EXPECT_EQ(0, mManager.registerSubsystem(c, 0));
    EXPECT_EQ(2, mManager.registerSubsystemAfter(d, 10));
    EXPECT_EQ(0, mManager.registerSubsystemBefore(e, 12));
    EXPECT_EQ(-1, mManager.registerSubsystemAfter(a, 99));
    EXPECT_EQ(2, mManager.registerSubsystem(a, -1));
    std::vector<int> order;
    for (unsigned int i = 0; i < mManager.getSubsystemCount(); ++i)
        order.push_back(mManager.getSubsystemByPos(i)->getSubsystemId());
    EXPECT_EQ((std::vector<int>{14, 12, 10, 13, 11}), order);
    EXPECT_EQ(-1, mManager.getSubsystemPos(99));
    EXPECT_EQ(nullptr, mManager.getSubsystem(99));
    EXPECT_THROW(mManager.getSubsystemByPos(5), std::out_of_range);
}

TEST_F(ProcessManagerTest, ASubsystemAppendedDuringAPassRunsInThatPassWithOneStampForItsProcesses) {
    TraceSubsystem& first = add(100, "first");
    TraceSubsystem late(101, "late", &mTrace);
    first.mAction = [&] {
        if (mManager.getSubsystemPos(101) < 0)
            mManager.registerSubsystem(late, -1);
        else
            mManager.stop(false);
    };
    mManager.run(true);
    EXPECT_EQ((Trace{"first", "late", "first", "late"}), mTrace);

    TraceSubsystem one(0, "", &mTrace), two(0, "", &mTrace);
    first.mProcesses = {&one, &two};
    mManager.updateSubsystem(100, true);
    ASSERT_EQ(1u, one.mStamps.size());
    EXPECT_EQ(one.mStamps, two.mStamps);
}
