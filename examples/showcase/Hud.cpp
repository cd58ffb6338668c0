#include "Hud.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iostream>
#include <map>
#include <sstream>

#include "Shapes.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace Showcase {

namespace {

// A 3 x 5 block font: five rows of three cells, top row first.
const std::map<char, const char*>& font() {
    static const std::map<char, const char*> glyphs = {
        {'0', "###"
              "# #"
              "# #"
              "# #"
              "###"},
        {'1', " # "
              "## "
              " # "
              " # "
              "###"},
        {'2', "###"
              "  #"
              "###"
              "#  "
              "###"},
        {'3', "###"
              "  #"
              " ##"
              "  #"
              "###"},
        {'4', "# #"
              "# #"
              "###"
              "  #"
              "  #"},
        {'5', "###"
              "#  "
              "###"
              "  #"
              "###"},
        {'6', "###"
              "#  "
              "###"
              "# #"
              "###"},
        {'7', "###"
              "  #"
              "  #"
              " # "
              " # "},
        {'8', "###"
              "# #"
              "###"
              "# #"
              "###"},
        {'9', "###"
              "# #"
              "###"
              "  #"
              "###"},
        {'A', " # "
              "# #"
              "###"
              "# #"
              "# #"},
        {'B', "## "
              "# #"
              "## "
              "# #"
              "## "},
        {'C', "###"
              "#  "
              "#  "
              "#  "
              "###"},
        {'D', "## "
              "# #"
              "# #"
              "# #"
              "## "},
        {'E', "###"
              "#  "
              "## "
              "#  "
              "###"},
        {'F', "###"
              "#  "
              "## "
              "#  "
              "#  "},
        {'G', "###"
              "#  "
              "# #"
              "# #"
              "###"},
        {'H', "# #"
              "# #"
              "###"
              "# #"
              "# #"},
        {'I', "###"
              " # "
              " # "
              " # "
              "###"},
        {'J', "  #"
              "  #"
              "  #"
              "# #"
              "###"},
        {'K', "# #"
              "# #"
              "## "
              "# #"
              "# #"},
        {'L', "#  "
              "#  "
              "#  "
              "#  "
              "###"},
        {'M', "# #"
              "###"
              "###"
              "# #"
              "# #"},
        {'N', "## "
              "# #"
              "# #"
              "# #"
              "# #"},
        {'O', "###"
              "# #"
              "# #"
              "# #"
              "###"},
        {'P', "###"
              "# #"
              "###"
              "#  "
              "#  "},
        {'Q', "###"
              "# #"
              "# #"
              "###"
              "  #"},
        {'R', "## "
              "# #"
              "## "
              "# #"
              "# #"},
        {'S', "###"
              "#  "
              "###"
              "  #"
              "###"},
        {'T', "###"
              " # "
              " # "
              " # "
              " # "},
        {'U', "# #"
              "# #"
              "# #"
              "# #"
              "###"},
        {'V', "# #"
              "# #"
              "# #"
              "# #"
              " # "},
        {'W', "# #"
              "# #"
              "###"
              "###"
              "# #"},
        {'X', "# #"
              "# #"
              " # "
              "# #"
              "# #"},
        {'Y', "# #"
              "# #"
              " # "
              " # "
              " # "},
        {'Z', "###"
              "  #"
              " # "
              "#  "
              "###"},
        {'.', "   "
              "   "
              "   "
              "   "
              " # "},
        {':', "   "
              " # "
              "   "
              " # "
              "   "},
        {'-', "   "
              "   "
              "###"
              "   "
              "   "},
        {',', "   "
              "   "
              "   "
              " # "
              "#  "},
        {'(', " # "
              "#  "
              "#  "
              "#  "
              " # "},
        {')', " # "
              "  #"
              "  #"
              "  #"
              " # "},
    };
    return glyphs;
}

// One cell of the font in overlay units; lines start below the band's top edge.
const float Cell = 0.0036f;
const float LineHeight = 7.5f * Cell;
const float TextLeft = 0.03f;
const float TextTop = 0.90f;

std::vector<Rect> layOut(const std::vector<std::string>& lines) {
    std::vector<Rect> cells;
    for (size_t line = 0; line < lines.size(); ++line) {
        float top = TextTop - static_cast<float>(line) * LineHeight;
        for (size_t column = 0; column < lines[line].size(); ++column) {
            auto glyph =
                font().find(static_cast<char>(std::toupper(static_cast<unsigned char>(lines[line][column]))));
            if (glyph == font().end())
                continue;
            float left = TextLeft + static_cast<float>(column) * 4.0f * Cell * 0.75f;
            for (int i = 0; i < 15; ++i)
                if (glyph->second[i] == '#') {
                    float x = left + static_cast<float>(i % 3) * Cell * 0.75f;
                    float y = top - static_cast<float>(i / 3 + 1) * Cell;
                    cells.push_back({x, y, x + Cell * 0.75f, y + Cell});
                }
        }
    }
    // An empty text still needs a shape to draw.
    if (cells.empty())
        cells.push_back({0.0f, 0.0f, 0.0f, 0.0f});
    return cells;
}

TransformationNode& meter(Nodes& nodes, Branch& root) {
    TransformationNode& band = place(nodes, root, 0, 0, 0);
    shape(nodes, band, makeColoredQuad(0.0f, 0.78f, 0.30f, 1.0f, Color(0, 0, 0, 0.55f)),
          unlitMaterial(Color(1, 1, 1), true));
    TransformationNode& bar = place(nodes, root, 0, 0, 0.1f);
    shape(nodes, bar, makeQuad(0.0f, 0.0f, 0.24f, 0.02f), unlitMaterial(Color(0.3f, 0.95f, 0.4f), false));
    return bar;
}

GeometrySubobject& text(Nodes& nodes, Branch& root) {
    TransformationNode& place = Showcase::place(nodes, root, 0, 0, 0.1f);
    GeometryObject& object = nodes.keep(new GeometryObject());
    GeometrySubobject* part = new GeometrySubobject();
    part->setGeometry(makeColoredQuads(layOut({}), Color(1, 1, 1)), 0);
    object.addSubobject(*part);
    object.setDefaultMaterial(0, unlitMaterial(Color(1, 1, 1), false));
    place.setChild(object);
    return *part;
}

}  // namespace

Hud::Hud(Nodes& nodes, Overlay& overlay)
    : mMeter(meter(nodes, *overlay.getRoot())), mText(text(nodes, *overlay.getRoot())) {}

void Hud::setFrameTime(double milliseconds) {
    float fill = static_cast<float>(std::min(1.0, std::max(0.02, milliseconds / 50.0)));
    mMeter.reset();
    mMeter.scale(fill, 1.0f, 1.0f, false);
    mMeter.translate(0.03f, 0.95f, 0.0f, false);
}

void Hud::setText(const std::vector<std::string>& lines) {
    if (lines == mLines)
        return;
    mLines = lines;
    mText.setGeometry(makeColoredQuads(layOut(lines), Color(0.95f, 0.95f, 0.85f)), 0);
}

FrameMonitor::FrameMonitor(int frames, const std::string& screenshots, RenderWindow& window, Hud& hud,
                           std::function<unsigned int()> particles)
    : mFrameLimit(frames), mScreenshots(screenshots), mWindow(window), mHud(hud),
      mCounter(VelunCore::getSingleton().getTimerManager().createHighresCounter()),
      mParticles(std::move(particles)) {
    if (!screenshots.empty() && frames > 0)
        for (int i = 1; i <= 3; ++i)
            mShotFrames.push_back(std::max(1, frames * i / 3));
}

int FrameMonitor::run(std::int64_t) {
    if (mFrames == 0) {
        mCounter->start();
    } else {
        mCounter->update();
        double ms = mCounter->getElapsedSeconds() * 1000.0;
        mFrameTimes.push_back(ms);
        mHud.setFrameTime(ms);
        // Text that changes every frame cannot be read: refresh it a few times a second.
        if (mFrames % 8 == 1) {
            char frame[32];
            std::snprintf(frame, sizeof frame, "FRAME %.1f MS", ms);
            mHud.setText({frame, "DRAWS " + std::to_string(mWindow.getDrawCallCount()),
                          "PARTICLES " + std::to_string(mParticles()), mStatus});
        }
    }
    ++mFrames;
    if (std::find(mShotFrames.begin(), mShotFrames.end(), mFrames) != mShotFrames.end())
        saveScreenshot();
    if (mFrameLimit > 0 && mFrames >= mFrameLimit)
        VelunCore::getSingleton().getProcessManager().stop(false);
    return 0;
}

void FrameMonitor::printStatistics() const {
    std::cout << "frames drawn: " << mFrames << std::endl;
    if (mFrameTimes.empty())
        return;
    std::vector<double> sorted = mFrameTimes;
    std::sort(sorted.begin(), sorted.end());
    double sum = 0.0;
    for (double t : sorted)
        sum += t;
    std::printf("frame time: mean %.2f ms, median %.2f ms, worst %.2f ms\n", sum / sorted.size(),
                sorted[sorted.size() / 2], sorted.back());
}

void FrameMonitor::saveScreenshot() {
    std::ostringstream name;
    name << mScreenshots << "/showcase-" << ++mShots << ".png";
    if (mWindow.saveScreenshot(name.str()))
        std::cout << "screenshot: " << name.str() << std::endl;
}

}  // namespace Showcase
