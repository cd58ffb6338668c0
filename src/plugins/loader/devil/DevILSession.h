#pragma once

namespace Velun {

// DevIL is one global library: it starts with the first initialised loader and shuts
// down with the last. Each start is a new session; images of an earlier session were
// deleted by the shutdown that ended it.
namespace DevILSession {

// Starts DevIL when no loader holds it; counts the holder.
void acquire();
// Shuts DevIL down when the last holder lets go.
void release();
// The running session, 0 while DevIL is shut down.
unsigned int current();

}  // namespace DevILSession

}  // namespace Velun
