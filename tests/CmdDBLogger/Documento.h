// A command of no class in particular, for tests of what every command has.
#pragma once

#include "Interpreter.h"

class Documento : public Command
{
};
