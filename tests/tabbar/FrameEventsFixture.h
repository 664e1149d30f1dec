#pragma once

// A frame whose host events can be raised, and a count of the deliveries that
// other threads handed over and that wait for the main thread.

#include "runtime/DelayExec.h"
#include "tabbar/FrameFixture.h"

namespace qx {

class FrameEventsTest : public FrameTest {
 protected:
  TTabbarFrame& Initialized() {
    TTabbarFrame& frame = MakeFrame();
    host_.Events().FireFromHost(u"Client.Initialized", {});
    return frame;
  }
  TTabImage* ImageOf(TFakeTab* tab) { return AsTabImage(frame_->TabList()->FindTabImageFromId(GuidOf(tab))); }
  std::size_t SharedQueue() {
    Platform().ProcessMessages();
    return static_cast<TSharedDelayTaskImpl*>(wrap_->EventSharedDelayTask())->List().Count();
  }
};

}  // namespace qx
