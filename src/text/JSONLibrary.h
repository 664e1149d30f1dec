#pragma once

// The JSON library in one include: values, parser and writer.

#include "text/JSONParser.h"
#include "text/JSONTextBuilder.h"
#include "text/JSONValue.h"
