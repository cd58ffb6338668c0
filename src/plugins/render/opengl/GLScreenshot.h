#pragma once
#include "velun_export.h"
#include <GL/glew.h>
#include <string>
#include <vector>

namespace Velun {

// Reads what a GL window shows and writes it to an image file. Needs the window's GL
// context current; pixels are 8-bit RGB, top row first as in image files.
class VELUN_EXPORT GLScreenshot {
public:
    // A rectangle of `buffer` (GL_FRONT shows the last swapped frame, GL_BACK the one
    // being drawn), from the lower left corner as GL counts. False on a GL error or an
    // empty rectangle.
    static bool readPixels(GLenum buffer, int x, int y, int width, int height,
                           std::vector<unsigned char>& rgb);
    // Writes top-first RGB rows through DevIL; the file type follows the extension
    // (".png", ".jpg", ".tga", ".bmp", ...). An existing file is replaced.
    static bool writeImage(std::string const& fileName, int width, int height,
                           std::vector<unsigned char> const& rgb);
    // Both: the whole width x height surface of `buffer` into the file.
    static bool save(std::string const& fileName, GLenum buffer, int width, int height);
};

}  // namespace Velun
