#include "core/SimpleLogger.h"

#include <iostream>

namespace Velun {

namespace {
void writeLine(const std::string& message) { std::cerr << message << std::endl; }
}  // namespace

void SimpleLogger::fatal(const std::string& message) { writeLine(message); }
void SimpleLogger::error(const std::string& message) { writeLine(message); }
void SimpleLogger::warn(const std::string& message) { writeLine(message); }
void SimpleLogger::info(const std::string& message) { writeLine(message); }
void SimpleLogger::debug(const std::string& message) { writeLine(message); }

}  // namespace Velun
