#include "plugins/render/opengl/GLScreenshot.h"

#include <IL/il.h>
#include <IL/ilu.h>

#include <cstring>
#include <sstream>

#include "core/VelunCore.h"
#include "plugins/loader/devil/DevILSession.h"
#include "plugins/render/opengl/GLError.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/GLRenderEngine.h"
#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"
#include "render/RenderTarget.h"

namespace Velun {

namespace {

const char* const kChannel = "render.opengl.GLScreenshot";

void logError(std::string const& text) { VelunCore::getLogger(kChannel)->error(text); }

}  // namespace

bool GLScreenshot::readPixels(GLenum buffer, int x, int y, int width, int height,
                              std::vector<unsigned char>& rgb) {
    if (width <= 0 || height <= 0)
        return false;
    glGetError();  // errors of earlier calls are not this read's
    const std::size_t row = std::size_t(width) * 3;
    std::vector<unsigned char> bottomUp(row * std::size_t(height));
    GLint readBuffer = 0;
    GLint packAlignment = 4;
    GLint packBuffer = 0;
    glGetIntegerv(GL_READ_BUFFER, &readBuffer);
    glGetIntegerv(GL_PACK_ALIGNMENT, &packAlignment);
    if (GLEW_ARB_pixel_buffer_object || GLEW_VERSION_2_1) {
        glGetIntegerv(GL_PIXEL_PACK_BUFFER_BINDING, &packBuffer);
        glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    }
    glReadBuffer(buffer);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, y, width, height, GL_RGB, GL_UNSIGNED_BYTE, bottomUp.data());
    GLenum code = glGetError();
    glPixelStorei(GL_PACK_ALIGNMENT, packAlignment);
    glReadBuffer(readBuffer);
    if (packBuffer)
        glBindBuffer(GL_PIXEL_PACK_BUFFER, packBuffer);
    if (code != GL_NO_ERROR) {
        logGLError(kChannel, "GL Error while reading pixels: ", code);
        return false;
    }
    // GL counts rows from the bottom, image files from the top.
    rgb.resize(bottomUp.size());
    for (int r = 0; r < height; ++r)
        std::memcpy(&rgb[std::size_t(r) * row], &bottomUp[std::size_t(height - 1 - r) * row], row);
    return true;
}

bool GLScreenshot::writeImage(std::string const& fileName, int width, int height,
                              std::vector<unsigned char> const& rgb) {
    if (width <= 0 || height <= 0 || rgb.size() < std::size_t(width) * std::size_t(height) * 3) {
        std::ostringstream text;
        text << "Could not save the image " << fileName << ": no pixels";
        logError(text.str());
        return false;
    }
    DevILSession::acquire();
    ILuint image = 0;
    ilGenImages(1, &image);
    ilBindImage(image);
    bool saved = ilTexImage(width, height, 1, 3, IL_RGB, IL_UNSIGNED_BYTE,
                            const_cast<unsigned char*>(rgb.data())) == IL_TRUE;
    if (saved) {
        // The rows are top first already; DevIL must not flip them again.
        ilRegisterOrigin(IL_ORIGIN_UPPER_LEFT);
        const bool overwrite = ilIsEnabled(IL_FILE_OVERWRITE) == IL_TRUE;
        ilEnable(IL_FILE_OVERWRITE);
        saved = ilSaveImage(fileName.c_str()) == IL_TRUE;
        if (!overwrite)
            ilDisable(IL_FILE_OVERWRITE);
    }
    ILenum code = ilGetError();
    while (ilGetError() != IL_NO_ERROR) {
    }
    if (!saved) {
        std::ostringstream text;
        text << "Could not save the image " << fileName << ": " << iluErrorString(code);
        logError(text.str());
    }
    ilDeleteImages(1, &image);
    DevILSession::release();
    return saved;
}

bool GLScreenshot::save(std::string const& fileName, GLenum buffer, int width, int height) {
    std::vector<unsigned char> rgb;
    return readPixels(buffer, 0, 0, width, height, rgb) && writeImage(fileName, width, height, rgb);
}

bool GLSDLRenderWindow::saveScreenshot(std::string const& fileName) {
    // What a swapped front buffer holds cannot be read back everywhere (X servers
    // without backing store give black), so the frame is drawn again into the hidden
    // buffer, read there and never shown.
    mRenderContext->beginFrame();
    drawTarget();
    bool saved = GLScreenshot::save(fileName, mDoubleBuffered ? GL_BACK : GL_FRONT, getWidth(), getHeight());
    mRenderContext->endFrame();
    return saved;
}

}  // namespace Velun
