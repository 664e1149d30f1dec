#pragma once

// Writes what a control's mouse events report into a log of short lines
// ("a.enter", "a.down 10,20", "a.move 10", "a.up", "a.click", ...).

#include <string>
#include <vector>

#include "toolkit/Control.h"

namespace qx::test {

inline void LogMouseEvents(TControl* c, const std::string& n, std::vector<std::string>& log) {
  c->OnMouseEnter = [&log, n](TFmxObject*) { log.push_back(n + ".enter"); };
  c->OnMouseLeave = [&log, n](TFmxObject*) { log.push_back(n + ".leave"); };
  c->OnMouseDown = [&log, n](TFmxObject*, TMouseButton, TShiftState, float x, float y) {
    log.push_back(n + ".down " + std::to_string(int(x)) + "," + std::to_string(int(y)));
  };
  c->OnMouseMove = [&log, n](TFmxObject*, TShiftState, float x, float) {
    log.push_back(n + ".move " + std::to_string(int(x)));
  };
  c->OnMouseUp = [&log, n](TFmxObject*, TMouseButton, TShiftState, float, float) {
    log.push_back(n + ".up");
  };
  c->OnClick = [&log, n](TFmxObject*) { log.push_back(n + ".click"); };
  c->OnDblClick = [&log, n](TFmxObject*) { log.push_back(n + ".dblclick"); };
}

}  // namespace qx::test
