#pragma once

#include "zent/values/ResourceWriter.h"
