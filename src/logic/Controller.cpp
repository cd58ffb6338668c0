#include "logic/Controller.h"

namespace Velun {

Controller::Controller() {}

Controller::~Controller() {}

}  // namespace Velun
