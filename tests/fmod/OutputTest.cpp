#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "TestSounds.h"
#include "core/LogManager.h"
#include "core/ProcessManager.h"
#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "scene/Branch.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "sound/Sound.h"
#include "sound/SoundManager.h"
#include "support/ChannelLog.h"

extern char** environ;

using Dorvan::SharedPtr;
using Velun::SoundChannel;
using Velun::VelunCore;

// OpenAL Soft reads its configuration once per process, so each of these tests runs
// the engine in a child: this program again, on one test of the FmodChild suite, with
// the configuration named in its environment. The child tests do nothing elsewhere.
namespace {

const char* const kChildDir = "VELUN_FMOD_CHILD_DIR";

// Runs the child test with OpenAL Soft on `drivers`, the wave writer's file in `dir`.
int runChild(const std::string& test, const FmodTest::TempDir& dir, const std::string& drivers) {
    std::ofstream(dir.file("alsoft.conf"))
        << "[general]\ndrivers = " << drivers
        << "\nchannels = stereo\nsample-type = int16\nfrequency = " << FmodTest::kRate
        << "\n[wave]\nfile = " << dir.file("out.wav") << "\n";
    setenv(kChildDir, dir.file("").c_str(), 1);
    setenv("ALSOFT_CONF", dir.file("alsoft.conf").c_str(), 1);
    std::string program = "/proc/self/exe", filter = "--gtest_filter=FmodChild." + test;
    char* argv[] = {&program[0], &filter[0], nullptr};
    pid_t child = 0;
    int status = -1;
    const bool spawned = posix_spawn(&child, program.c_str(), nullptr, nullptr, argv, environ) == 0;
    unsetenv(kChildDir);
    unsetenv("ALSOFT_CONF");
    if (spawned)
        waitpid(child, &status, 0);
    return spawned && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(FmodOutput, ASoundNodeIsWrittenToTheWaveOutputOnItsSideAndWithoutADeviceTheGameRunsSilently) {
    FmodTest::TempDir dir;
    std::filesystem::create_directory(dir.file("sound"));
    ASSERT_TRUE(FmodTest::writeSound(dir.file("sound/tone.wav"), FmodTest::tone(440, 0.25f), 2,
                                     SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    ASSERT_EQ(runChild("PlaysASoundNode", dir, "wave"), 0);
    SndfileHandle file(dir.file("out.wav"));
    ASSERT_EQ(file.channels(), 2);
    std::vector<float> out(static_cast<size_t>(file.frames()) * 2);
    file.read(out.data(), static_cast<sf_count_t>(out.size()));
    ASSERT_GT(out.size(), static_cast<size_t>(FmodTest::kRate));
    EXPECT_GT(FmodTest::energy(out, 0), 100.0 * FmodTest::energy(out, 1));
    EXPECT_EQ(runChild("RunsWithoutADevice", dir, "no-such-driver"), 0);
}

// In a child, starts the game in the folder the parent made, its log lines into `log`.
bool startChild(VelunTest::ChannelLog& log) {
    if (!getenv(kChildDir) || chdir(getenv(kChildDir)) != 0)
        return false;
    VelunCore::getSingleton().startup();
    VelunCore::getSingleton().getLogManager().registerBackend(log);
    VelunCore::getSingleton().setup(true);
    return true;
}

// A jeep's engine on a Sound node three units to the listener's left for 300 frames.
TEST(FmodChild, PlaysASoundNode) {
    VelunTest::ChannelLog log;
    if (!startChild(log))
        GTEST_SKIP();
    VelunCore& core = VelunCore::getSingleton();
    Velun::SoundManager& sounds = core.getResourceManager().getSoundManager();
    SharedPtr<SoundChannel> engineSound = sounds.createChannel(sounds.getSoundSource("tone.wav", true, true));
    ASSERT_TRUE(engineSound);
    Velun::SceneGraph& scene = core.getSceneManager().createSceneGraph();
    Velun::TransformationNode jeep;
    Velun::Sound sound;
    jeep.setChild(sound);
    jeep.translate(-3, 0, 0, false);
    scene.getRoot()->attachChild(jeep);
    sound.addChannel(engineSound);
    engineSound->setRepeat(true);
    EXPECT_TRUE(engineSound->play());
    for (int frame = 0; frame < 300; ++frame) {
        core.getProcessManager().update(true);
        usleep(2000);
    }
    scene.getRoot()->detachChild(jeep.getNodeId());
    core.shutdown();
    EXPECT_TRUE(log.mLines.empty());
}

TEST(FmodChild, RunsWithoutADevice) {
    VelunTest::ChannelLog log;
    if (!startChild(log))
        GTEST_SKIP();
    VelunCore& core = VelunCore::getSingleton();
    Velun::SoundManager& sounds = core.getResourceManager().getSoundManager();
    EXPECT_FALSE(sounds.getSoundEngine());
    EXPECT_FALSE(sounds.createChannel(sounds.getSoundSource("tone.wav", true, true)));
    for (int frame = 0; frame < 3; ++frame)
        core.getProcessManager().update(true);
    EXPECT_EQ(log.mLines,
              std::vector<std::string>(
                  {"plugins.sound.fmod: FMOD Error: The sound output device could not be opened."}));
    core.shutdown();
}

}  // namespace
