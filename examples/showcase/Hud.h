#pragma once

// The heads-up display, drawn in the main camera's overlay (coordinates 0 to 1 across
// the view, y up): a dark band across the top with a bar for the frame time and lines
// of text in a small block font.

#include <functional>
#include <string>
#include <vector>

#include "Scene.h"

namespace Showcase {

class Hud {
public:
    Hud(Nodes& nodes, Velun::Overlay& overlay);

    // A full bar is 50 ms, a frame at 20 frames per second.
    void setFrameTime(double milliseconds);
    // Letters (shown in upper case), digits and . : - ( ) , are drawn; others leave a gap.
    void setText(const std::vector<std::string>& lines);

private:
    Velun::TransformationNode& mMeter;
    Velun::GeometrySubobject& mText;
    std::vector<std::string> mLines;
};

// Runs after the engine's subsystems in every pass: measures the frame, feeds the HUD,
// takes the screenshots and ends a run of a fixed number of frames. At exit it prints
// the frame statistics.
class FrameMonitor : public Velun::Process {
public:
    // `frames` 0 runs until the window closes; `screenshots` empty takes none.
    // `particles` counts the live particles for the HUD.
    FrameMonitor(int frames, const std::string& screenshots, Velun::RenderWindow& window, Hud& hud,
                 std::function<unsigned int()> particles);

    // Lines shown under the frame statistics, such as what was picked last.
    void setStatus(const std::string& line) { mStatus = line; }

    int run(std::int64_t timestamp) override;
    void printStatistics() const;

private:
    void saveScreenshot();

    int mFrameLimit;
    std::string mScreenshots;
    Velun::RenderWindow& mWindow;
    Hud& mHud;
    Dorvan::SharedPtr<Velun::Counter> mCounter;
    std::vector<int> mShotFrames;
    std::vector<double> mFrameTimes;
    std::string mStatus;
    std::function<unsigned int()> mParticles;
    int mFrames = 0;
    int mShots = 0;
};

}  // namespace Showcase
