// The drawing tests' window and engine, shared with this program.
#include "render_gl/GLDrawFixture.cpp"
