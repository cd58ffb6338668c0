#pragma once

#include <string>

#include "velun_export.h"

namespace Velun {

class ObjectNode;

// Makes objects of one kind, e.g. of one model file that was parsed once. ObjectManager
// caches factories by name; an application may register one of its own for objects
// that no file describes.
class VELUN_EXPORT ObjectFactory {
public:
    virtual ~ObjectFactory();

    virtual std::string const& getName() const = 0;
    // A new object, owned by the caller, or null if none could be made.
    virtual ObjectNode* createObject() = 0;
};

}  // namespace Velun
