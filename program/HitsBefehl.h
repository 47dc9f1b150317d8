// The command hits stands with the others.
#pragma once

#include "Befehle.h"
