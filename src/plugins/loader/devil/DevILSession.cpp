#include "plugins/loader/devil/DevILSession.h"

#include <IL/il.h>
#include <IL/ilu.h>

namespace Velun {

namespace DevILSession {

namespace {

unsigned int gHolders = 0;
unsigned int gSession = 0;
unsigned int gLastSession = 0;

}  // namespace

void acquire() {
    if (gHolders++ > 0)
        return;
    ilInit();
    iluInit();
    // Files keep rows bottom-up (BMP, most TGAs) or top-down (PNG, JPEG); the engine
    // wants the top row first from all of them.
    ilEnable(IL_ORIGIN_SET);
    ilOriginFunc(IL_ORIGIN_UPPER_LEFT);
    gSession = ++gLastSession;
}

void release() {
    if (gHolders == 0 || --gHolders > 0)
        return;
    ilShutDown();
    gSession = 0;
}

unsigned int current() { return gSession; }

}  // namespace DevILSession

}  // namespace Velun
