#pragma once

// The JSON library in one include: values, parser and writer.

#include "runtime/JSONParser.h"
#include "runtime/JSONTextBuilder.h"
#include "runtime/JSONValue.h"
