#include "SkinPictures.h"

#include <cmath>
#include <functional>
#include <map>
#include <numbers>
#include <optional>

#include "Painter.h"

namespace qx::skin {
namespace {

// One calm palette: slate surfaces, a blue accent, six group colours.
const TColor kStripTop = Rgb(0x2E3238), kStripBottom = Rgb(0x24272C);
const TColor kStripInactiveTop = Rgb(0x3A3D42), kStripInactiveBottom = Rgb(0x323539);
const TColor kSurface = Rgb(0x3B4048), kSurfaceInactive = Rgb(0x45484D);
const TColor kLine = Rgb(0x15171A), kLineSoft = Rgb(0xFFFFFF, 0.08f);
const TColor kAccent = Rgb(0x4C9AFF), kAccentDark = Rgb(0x2F6FCC);
const TColor kDanger = Rgb(0xE5484D), kDangerDark = Rgb(0xB8343A);
const TColor kAmber = Rgb(0xF5B83D), kAmberDark = Rgb(0xC98F1E);
const TColor kWhite = Rgb(0xFFFFFF), kInk = Rgb(0x1B1D21);
const TColor kGroup[6] = {Rgb(0x4C8DF6), Rgb(0x34A853), Rgb(0xF29D38), Rgb(0xE8505B), Rgb(0x9B6CE6), Rgb(0x1FB5AD)};

using TDraw = std::function<void(TBitmap&, TPainter&)>;

std::unique_ptr<TBitmap> Picture(int width, int height, const TDraw& draw) {
  auto bitmap = std::make_unique<TBitmap>(width, height);
  bitmap->Clear(0);
  TPainter painter(*bitmap);
  draw(*bitmap, painter);
  return bitmap;
}

float W(const TBitmap& b) { return static_cast<float>(b.Width()); }
float H(const TBitmap& b) { return static_cast<float>(b.Height()); }

// ---- glyphs, centred on (cx, cy)

void Cross(TPainter& p, float cx, float cy, float half, float thickness, TColor c) {
  p.Fill(Union(Segment({cx - half, cy - half}, {cx + half, cy + half}, thickness),
               Segment({cx - half, cy + half}, {cx + half, cy - half}, thickness)),
         c);
}

void Plus(TPainter& p, float cx, float cy, float half, float thickness, TColor c) {
  p.Fill(Union(Segment({cx - half, cy}, {cx + half, cy}, thickness), Segment({cx, cy - half}, {cx, cy + half}, thickness)),
         c);
}

void Pin(TPainter& p, float cx, float cy, float s, TColor c) {
  // A push pin leaning to the right: round head, collar, needle.
  p.Fill(Circle(cx + 1.5f * s, cy - 2.5f * s, 3.2f * s), c);
  p.Fill(Segment({cx - 0.5f * s, cy - 0.5f * s}, {cx + 3.5f * s, cy - 4.5f * s}, 2.2f * s), c);
  p.Fill(Segment({cx - 4.5f * s, cy + 4.5f * s}, {cx + 0.5f * s, cy - 0.5f * s}, 1.4f * s), c);
}

void StarGlyph(TPainter& p, float cx, float cy, float r, TColor c) { p.Fill(Star(cx, cy + 0.5f, r, r * 0.45f, 5), c); }

void Chevron(TPainter& p, float cx, float cy, float half, float thickness, bool down, TColor c) {
  const float dy = down ? half / 2 : -half / 2;
  p.Fill(Union(Segment({cx - half, cy - dy}, {cx, cy + dy}, thickness), Segment({cx, cy + dy}, {cx + half, cy - dy}, thickness)),
         c);
}

void Magnifier(TPainter& p, float cx, float cy, float r, TColor c) {
  p.Fill(Outline(Circle(cx - 1, cy - 1, r), 2.0f), c);
  p.Fill(Segment({cx - 1 + r * 0.7f, cy - 1 + r * 0.7f}, {cx + r + 2.5f, cy + r + 2.5f}, 2.6f), c);
}

void Lock(TPainter& p, float cx, float cy, float s, TColor c) {
  p.Fill(RoundRect(cx - 4 * s, cy - 0.5f * s, cx + 4 * s, cy + 5 * s, 1.2f * s), c);
  p.Fill(Outline(Subtract(RoundRect(cx - 2.6f * s, cy - 5 * s, cx + 2.6f * s, cy + 2 * s, 2.6f * s),
                          RoundRect(cx - 5 * s, cy, cx + 5 * s, cy + 6 * s, 0)),
                 1.4f * s),
         c);
}

// Three cards stacked: the cabinet of a group.
void Cabinet(TPainter& p, float cx, float cy, TColor c, bool opened) {
  p.Fill(RoundRect(cx - 7, cy - 6, cx + 5, cy + 2, 2), WithAlpha(c, 0.45f));
  p.Fill(RoundRect(cx - 5, cy - 3, cx + 7, cy + 6, 2), c);
  p.Fill(RoundRect(cx - 3.5f, cy - 1.5f, cx + 5.5f, cy + 0.5f, 1), WithAlpha(kWhite, 0.55f));
  if (opened) Chevron(p, cx + 1, cy + 3, 2.5f, 1.4f, false, kWhite);
}

// ---- building blocks

// A round button ground for the three states of a glyph button.
void ButtonGround(TPainter& p, const TBitmap& b, int state, TColor hover, TColor press) {
  if (state == 0) return;
  p.Fill(RoundRect(2, 2, W(b) - 2, H(b) - 2, 6), state == 1 ? hover : press);
}

void Background(TPainter& p, const TBitmap& b, TColor top, TColor bottom, bool borderBottom) {
  p.Fill(RoundRect(-1, -1, W(b) + 1, H(b) + 1, 0), Vertical(top, bottom, 0, H(b)));
  p.Fill(RoundRect(-1, 0, W(b) + 1, 1, 0), kLineSoft);
  if (borderBottom) p.Fill(RoundRect(-1, H(b) - 1, W(b) + 1, H(b) + 1, 0), kLine);
}

// The frame that marks a tab: an outline with a faint glow inside.
void TabFrame(TPainter& p, const TBitmap& b, TColor c, float glow) {
  auto frame = RoundRect(1, 1, W(b) - 1, H(b) - 1, 4);
  p.Fill(Outline(frame, 2), c);
  p.Fill(Subtract(RoundRect(2, 2, W(b) - 2, H(b) - 2, 3), RoundRect(4, 4, W(b) - 4, H(b) - 4, 2)),
         WithAlpha(c, glow));
}

void CloseButton(TPainter& p, const TBitmap& b, int state) {
  const float cx = W(b) / 2, cy = H(b) / 2;
  const TColor ground[3] = {Rgb(0x000000, 0.45f), kDanger, kDangerDark};
  p.Fill(Circle(cx, cy, state == 2 ? 8.0f : 8.5f), ground[state]);
  Cross(p, cx, cy, 3.2f, 1.7f, kWhite);
}

// Badge grounds: 0 plain badge, 1 ready (on the close button's place), 2 hovered, 3 pressed.
void Badge(TPainter& p, const TBitmap& b, int state, TColor colour, TColor dark, const std::function<void(TPainter&)>& glyph) {
  const float cx = W(b) / 2, cy = H(b) / 2;
  p.Shadow(Circle(cx, cy + 1, 7.5f), Rgb(0x000000, 0.35f), 2);
  const TColor ground = state == 1 ? Rgb(0x2A2D33) : state == 3 ? dark : colour;
  p.Fill(Circle(cx, cy, 8), ground);
  if (state == 1) p.Fill(Outline(Circle(cx, cy, 8), 1.2f), colour);
  if (state == 2) p.Fill(Outline(Circle(cx, cy, 8), 1.2f), WithAlpha(kWhite, 0.7f));
  glyph(p);
}

void Progress(TBitmap& b, TPainter&) {
  // Frames side by side, each square: eight dots whose brightness runs round.
  const int size = b.Height();
  const int frames = b.Width() / size;
  for (int f = 0; f < frames; ++f) {
    TPainter p(b);
    for (int i = 0; i < 8; ++i) {
      const float angle = static_cast<float>(i) * std::numbers::pi_v<float> / 4 - std::numbers::pi_v<float> / 2;
      const float cx = static_cast<float>(f * size) + static_cast<float>(size) / 2 + std::cos(angle) * 7.5f;
      const float cy = static_cast<float>(size) / 2 + std::sin(angle) * 7.5f;
      const int age = ((f * 8 / frames) - i + 16) % 8;
      p.Fill(Circle(cx, cy, 2.1f - 0.1f * static_cast<float>(age)), WithAlpha(kWhite, 1.0f - 0.11f * static_cast<float>(age)));
    }
  }
}

std::map<std::string, std::function<std::unique_ptr<TBitmap>()>> Catalogue() {
  std::map<std::string, std::function<std::unique_ptr<TBitmap>()>> c;
  auto add = [&](const std::string& key, int w, int h, TDraw draw) {
    c[key] = [=] { return Picture(w, h, draw); };
  };

  // ---- the tab strip
  add("TabProgress", 24 * 12, 24, Progress);
  const char* closeNames[3] = {"TabClose", "TabCloseHovered", "TabClosePressed"};
  for (int s = 0; s < 3; ++s) add(closeNames[s], 22, 22, [s](TBitmap& b, TPainter& p) { CloseButton(p, b, s); });
  add("CabinetTabDragBadgeClose", 22, 22, [](TBitmap& b, TPainter& p) { CloseButton(p, b, 1); });
  const char* suffix[4] = {"", "Ready", "Hovered", "Pressed"};
  for (int s = 0; s < 4; ++s) {
    add(std::string("TabBadgeProtected") + suffix[s], 22, 22, [s](TBitmap& b, TPainter& p) {
      Badge(p, b, s, kAccent, kAccentDark, [&](TPainter& q) { Pin(q, W(b) / 2, H(b) / 2 + 0.5f, 0.95f, kWhite); });
    });
    add(std::string("TabBadgeBookmarked") + suffix[s], 22, 22, [s](TBitmap& b, TPainter& p) {
      Badge(p, b, s, kAmber, kAmberDark, [&](TPainter& q) { StarGlyph(q, W(b) / 2, H(b) / 2, 5.2f, kWhite); });
    });
  }
  add("TabBadgeBookmarkedProtected", 22, 22, [](TBitmap& b, TPainter& p) {
    Badge(p, b, 0, kAmber, kAmberDark, [&](TPainter& q) { StarGlyph(q, W(b) / 2, H(b) / 2, 5.2f, kWhite); });
    p.Fill(Circle(17, 5, 4.5f), kAccent);
    p.Fill(Outline(Circle(17, 5, 4.5f), 1), Rgb(0x24272C));
    Pin(p, 17, 5.5f, 0.5f, kWhite);
  });
  add("TabBoundHovered", 98, 49, [](TBitmap& b, TPainter& p) { TabFrame(p, b, WithAlpha(kAccent, 0.8f), 0.18f); });
  add("TabActive", 98, 49, [](TBitmap& b, TPainter& p) { TabFrame(p, b, kAccent, 0.3f); });
  add("TabActiveInactive", 98, 49, [](TBitmap& b, TPainter& p) { TabFrame(p, b, Rgb(0x9AA0A8), 0.2f); });
  add("TabBlank", 96, 47, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(-1, -1, W(b) + 1, H(b) + 1, 0), Vertical(Rgb(0xF7F8FA), Rgb(0xE9ECF0), 0, H(b)));
    p.Fill(RoundRect(0, 0, W(b), 7, 0), Rgb(0xDDE1E7));
    p.Fill(RoundRect(8, 13, 52, 17, 2), Rgb(0xC9CED6));
    for (int i = 0; i < 4; ++i) {
      const float y = 22 + 5 * static_cast<float>(i);
      p.Fill(RoundRect(8, y, i == 3 ? 60.0f : 86.0f, y + 2.5f, 1.25f), Rgb(0xD7DBE1));
    }
  });
  add("TabCloseFlickWipe", 98, 49, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(1, 1, W(b) - 1, H(b) - 1, 5), WithAlpha(kDanger, 0.55f));
    p.Fill(Circle(W(b) / 2, H(b) / 2, 12), WithAlpha(kDangerDark, 0.9f));
    Cross(p, W(b) / 2, H(b) / 2, 5, 2.4f, kWhite);
  });
  add("HoldAndGoFeedback", 64, 64, [](TBitmap& b, TPainter& p) {
    p.Fill(Circle(W(b) / 2, H(b) / 2, 28), WithAlpha(kAccent, 0.18f));
    p.Fill(Outline(Circle(W(b) / 2, H(b) / 2, 26), 3), WithAlpha(kAccent, 0.9f));
    p.Fill(Circle(W(b) / 2, H(b) / 2, 6), kAccent);
  });
  for (int i = 1; i <= 6; ++i) {
    const TColor g = kGroup[i - 1];
    add("TabNameBackground" + std::to_string(i), 36, 20, [g](TBitmap& b, TPainter& p) {
      p.Fill(RoundRect(0.5f, 0.5f, W(b) - 0.5f, H(b) - 0.5f, 9.5f), Vertical(Mix(g, kWhite, 0.12f), g, 0, H(b)));
      p.Fill(Outline(RoundRect(1, 1, W(b) - 1, H(b) - 1, 9), 1), WithAlpha(kWhite, 0.18f));
    });
  }
  const int kStrip = 64;
  add("TabbarBackgroundLeft", 24, kStrip, [](TBitmap& b, TPainter& p) {
    Background(p, b, kStripTop, kStripBottom, true);
    p.Fill(RoundRect(0, 0, 1, H(b), 0), kLineSoft);
  });
  add("TabbarBackgroundFill", 8, kStrip, [](TBitmap& b, TPainter& p) { Background(p, b, kStripTop, kStripBottom, true); });
  add("TabbarBackgroundRight", 24, kStrip, [](TBitmap& b, TPainter& p) {
    Background(p, b, kStripTop, kStripBottom, true);
    p.Fill(RoundRect(W(b) - 1, 0, W(b), H(b), 0), kLine);
  });
  add("TabbarBackgroundInactiveLeft", 24, kStrip, [](TBitmap& b, TPainter& p) {
    Background(p, b, kStripInactiveTop, kStripInactiveBottom, true);
  });
  add("TabbarBackgroundInactiveFill", 8, kStrip, [](TBitmap& b, TPainter& p) {
    Background(p, b, kStripInactiveTop, kStripInactiveBottom, true);
  });
  add("TabbarBackgroundInactiveRight", 24, kStrip, [](TBitmap& b, TPainter& p) {
    Background(p, b, kStripInactiveTop, kStripInactiveBottom, true);
  });
  // The last row of the top bar is the border line the parent form repeats.
  add("TopBarBackground", 16, 30, [](TBitmap& b, TPainter& p) { Background(p, b, Rgb(0x383C43), kStripTop, true); });
  add("TopbarBackgroundInactive", 16, 30, [](TBitmap& b, TPainter& p) {
    Background(p, b, Rgb(0x44474C), kStripInactiveTop, true);
  });

  // ---- the group bar
  const int kBar = 24;
  auto groupTab = [&](const std::string& key, int part, TColor surface) {
    add(key, 10, kBar, [part, surface](TBitmap& b, TPainter& p) {
      // One rounded tab cut in three: left cap, fill, right cap.
      const float left = part == 0 ? 0.5f : -20.0f, right = part == 2 ? W(b) - 0.5f : W(b) + 20.0f;
      p.Fill(RoundRect(left, 1, right, H(b) + 8, 6), Vertical(Mix(surface, kWhite, 0.08f), surface, 0, H(b)));
      p.Fill(Outline(RoundRect(left, 1, right, H(b) + 8, 6), 1), WithAlpha(kWhite, 0.10f));
    });
  };
  groupTab("TabGroupLeftActive", 0, kSurface);
  groupTab("TabGroupActive", 1, kSurface);
  groupTab("TabGroupRightActive", 2, kSurface);
  groupTab("TabGroupLeftActiveInactive", 0, kSurfaceInactive);
  groupTab("TabGroupActiveInactive", 1, kSurfaceInactive);
  groupTab("TabGroupRightActiveInactive", 2, kSurfaceInactive);
  add("TabgroupbarSeparator", 2, kBar, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(0.5f, 6, 1.5f, H(b) - 6, 0.5f), WithAlpha(kWhite, 0.16f));
  });
  add("TabGroupbarBackground", 30, kBar, [](TBitmap& b, TPainter& p) {
    Background(p, b, Rgb(0x2A2D33), Rgb(0x272A2F), false);
  });
  add("TabGroupActiveMune", 16, kBar, [](TBitmap& b, TPainter& p) {
    Chevron(p, W(b) / 2, H(b) / 2, 3.5f, 1.6f, true, WithAlpha(kWhite, 0.75f));
  });
  add("TabGroupActiveMunePressed", 16, kBar, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(1, 3, W(b) - 1, H(b) - 3, 4), WithAlpha(kWhite, 0.14f));
    Chevron(p, W(b) / 2, H(b) / 2 + 0.5f, 3.5f, 1.6f, true, kWhite);
  });
  const char* dragNames[3] = {"TabGroupDragHoveredLeft", "TabGroupDragHoveredFill", "TabGroupDragHoveredRight"};
  for (int part = 0; part < 3; ++part) {
    add(dragNames[part], 10, kBar, [part](TBitmap& b, TPainter& p) {
      const float left = part == 0 ? 1.0f : -20.0f, right = part == 2 ? W(b) - 1 : W(b) + 20.0f;
      p.Fill(RoundRect(left, 2, right, H(b) - 2, 6), WithAlpha(kAccent, 0.25f));
      p.Fill(Outline(RoundRect(left, 2, right, H(b) - 2, 6), 1.5f), kAccent);
    });
  }

  // ---- per group colour
  const int kButton = 30;
  for (int i = 1; i <= 6; ++i) {
    const TColor g = kGroup[i - 1];
    const std::string n = std::to_string(i);
    add("TabGroup" + n, 14, kBar, [g](TBitmap& b, TPainter& p) { p.Fill(Circle(W(b) / 2, H(b) / 2, 4), WithAlpha(g, 0.8f)); });
    add("TabGroup" + n + "Active", 14, kBar, [g](TBitmap& b, TPainter& p) {
      p.Fill(Circle(W(b) / 2, H(b) / 2, 5), g);
      p.Fill(Outline(Circle(W(b) / 2, H(b) / 2, 6.5f), 1.2f), WithAlpha(g, 0.6f));
    });
    add("TabGroupPrivate" + n, 14, kBar, [g](TBitmap& b, TPainter& p) {
      p.Fill(Outline(Circle(W(b) / 2, H(b) / 2, 4), 1.6f), WithAlpha(g, 0.85f));
    });
    add("TabGroupPrivate" + n + "Active", 14, kBar, [g](TBitmap& b, TPainter& p) {
      p.Fill(Outline(Circle(W(b) / 2, H(b) / 2, 4.5f), 2.2f), g);
      p.Fill(Circle(W(b) / 2, H(b) / 2, 1.6f), g);
    });
    const char* states[3] = {"", "Hovered", "Pressed"};
    for (int s = 0; s < 3; ++s) {
      add("TabbarCabinet" + n + states[s], kButton, kButton, [g, s](TBitmap& b, TPainter& p) {
        ButtonGround(p, b, s, WithAlpha(kWhite, 0.10f), WithAlpha(kWhite, 0.18f));
        Cabinet(p, W(b) / 2, H(b) / 2, s == 2 ? Mix(g, kWhite, 0.2f) : g, false);
      });
      add("TabbarAdd" + n + states[s], kButton, kButton, [g, s](TBitmap& b, TPainter& p) {
        ButtonGround(p, b, s, WithAlpha(g, 0.22f), WithAlpha(g, 0.38f));
        Plus(p, W(b) / 2, H(b) / 2, 6, 2.2f, s == 0 ? Mix(g, kWhite, 0.15f) : kWhite);
      });
      add("TabbarCabinetPrivate" + n + states[s], kButton, kButton, [g, s](TBitmap& b, TPainter& p) {
        ButtonGround(p, b, s, WithAlpha(kWhite, 0.10f), WithAlpha(kWhite, 0.18f));
        Cabinet(p, W(b) / 2 - 2, H(b) / 2 - 1, WithAlpha(g, 0.75f), false);
        p.Fill(Circle(W(b) / 2 + 6, H(b) / 2 + 6, 5.5f), Rgb(0x24272C));
        Lock(p, W(b) / 2 + 6, H(b) / 2 + 6, 0.75f, kWhite);
      });
    }
  }
  const char* opened[3] = {"TabbarCabinetOpened", "TabbarCabinetOpenedHovered", "TabbarCabinetOpenedPressed"};
  for (int s = 0; s < 3; ++s) {
    add(opened[s], kButton, kButton, [s](TBitmap& b, TPainter& p) {
      ButtonGround(p, b, s, WithAlpha(kAccent, 0.22f), WithAlpha(kAccent, 0.4f));
      Cabinet(p, W(b) / 2, H(b) / 2, kAccent, true);
    });
  }

  // ---- the cabinet screen's shadows
  add("CabinetTabLargeBackShadow", 136, 88, [](TBitmap& b, TPainter& p) {
    p.Shadow(RoundRect(12, 14, W(b) - 12, H(b) - 10, 6), Rgb(0x000000, 0.35f), 10);
  });
  add("CabinetTabLargeShadow", 136, 88, [](TBitmap& b, TPainter& p) {
    p.Shadow(RoundRect(10, 10, W(b) - 10, H(b) - 8, 5), Rgb(0x000000, 0.55f), 7);
  });

  // ---- smart search
  const TColor kPopup = Rgb(0xFBFCFD), kPopupEdge = Rgb(0xC7CDD6);
  auto popup = [&](const std::string& key, int w, int part, bool upward) {
    // As high as the popup: a bubble round the button row (30 to 60), clear bands above and
    // below, and a notch pointing at the selection, 32 in from the left edge.
    add(key, w, 90, [=](TBitmap& b, TPainter& p) {
      const float left = part == 0 || part == 3 ? 4.0f : -30.0f;
      const float right = part == 2 || part == 3 ? W(b) - 4 : W(b) + 30.0f;
      const float top = 24.0f, bottom = 66.0f;
      auto body = RoundRect(left, top, right, bottom, 7);
      p.Shadow(Offset(body, 0, 1.5f), Rgb(0x000000, 0.25f), 3.5f);
      p.Fill(body, kPopup);
      p.Fill(Outline(body, 1), kPopupEdge);
      if (part == 0 || part == 3) {
        const float nx = 32;
        std::vector<TVec> notch = upward ? std::vector<TVec>{{nx - 7, bottom - 1}, {nx + 7, bottom - 1}, {nx, bottom + 8}}
                                         : std::vector<TVec>{{nx - 7, top + 1}, {nx + 7, top + 1}, {nx, top - 8}};
        p.Fill(Polygon(notch), kPopup);
      }
    });
  };
  popup("SmartSearchBackgroundDownwardLeft", 48, 0, false);
  popup("SmartSearchBackgroundDownwardFill", 8, 1, false);
  popup("SmartSearchBackgroundDownwardRight", 16, 2, false);
  popup("SmartSearchBackgroundDownward", 64, 3, false);
  popup("SmartSearchBackgroundUpwardLeft", 48, 0, true);
  popup("SmartSearchBackgroundUpwardFill", 8, 1, true);
  popup("SmartSearchBackgroundUpwardRight", 16, 2, true);
  popup("SmartSearchBackgroundUpward", 64, 3, true);
  popup("SmartSearchExtendedBackgroundUpwardRight", 16, 2, true);
  const char* buttonStates[3] = {"", "Hovered", "Pressed"};
  // Dark, so the light bold label on it reads.
  const TColor buttonFill[3] = {Rgb(0x3B6FC4), Rgb(0x4A80D6), Rgb(0x2C5AA6)};
  for (int s = 0; s < 3; ++s) {
    const std::string base = std::string("SmartSearchButton") + buttonStates[s];
    const TColor fill = buttonFill[s];
    const bool edge = s > 0;
    auto part = [&](const std::string& key, int w, int which) {
      add(key, w, 30, [=](TBitmap& b, TPainter& p) {
        const float left = which == 0 || which == 3 ? 1.0f : -20.0f;
        const float right = which == 2 || which == 3 ? W(b) - 1 : W(b) + 20.0f;
        auto shape = RoundRect(left, 3, right, H(b) - 3, 5);
        p.Fill(shape, fill);
        if (edge) p.Fill(Outline(shape, 1), WithAlpha(kAccent, 0.6f));
      });
    };
    part(base + "Left", 6, 0);
    part(base + "Fill", 4, 1);
    part(base + "Right", 6, 2);
    part(base, 40, 3);
  }
  add("SmartSearchLupe", 20, 30, [](TBitmap& b, TPainter& p) { Magnifier(p, W(b) / 2 - 1, H(b) / 2 - 1, 5, Rgb(0xE6E9EE)); });
  for (int s = 0; s < 3; ++s) {
    add(std::string("SmartSearchMore") + buttonStates[s], 18, 30, [s](TBitmap& b, TPainter& p) {
      if (s > 0) p.Fill(RoundRect(1, 4, W(b) - 1, H(b) - 4, 5), s == 1 ? Rgb(0xE8F1FF) : Rgb(0xD2E3FF));
      for (int i = -1; i <= 1; ++i)
        p.Fill(Circle(W(b) / 2, H(b) / 2 + 5 * static_cast<float>(i), 1.6f), s == 0 ? Rgb(0x6B7380) : kAccentDark);
    });
  }
  add("SmartSearchServiceHovered", 22, 30, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(1, 3, W(b) - 1, H(b) - 3, 5), Rgb(0xE8F1FF));
  });
  add("SmartSearchServicePressed", 22, 30, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(1, 3, W(b) - 1, H(b) - 3, 5), Rgb(0xD2E3FF));
    p.Fill(Outline(RoundRect(1, 3, W(b) - 1, H(b) - 3, 5), 1), WithAlpha(kAccent, 0.6f));
  });

  // ---- the cabinet bar
  const int kCabinetBar = 28;
  // Light, so the bar's dark grey titles read.
  add("CabinetbarBackground", 8, kCabinetBar, [](TBitmap& b, TPainter& p) {
    Background(p, b, Rgb(0xE6E9ED), Rgb(0xD5D9DF), false);
  });
  add("CabinetbarBackgroundInactive", 8, kCabinetBar, [](TBitmap& b, TPainter& p) {
    Background(p, b, Rgb(0xEEF0F2), Rgb(0xE3E5E8), false);
  });
  const TColor wire = WithAlpha(kAccent, 0.75f);
  add("CabinetbarTabWireLeft", 8, kCabinetBar, [wire](TBitmap& b, TPainter& p) {
    // The wire drops from the bar's bottom edge to the tab area's left end.
    p.Fill(Outline(RoundRect(1, H(b) - 9, W(b) + 20, H(b) + 20, 6), 1.5f), wire);
  });
  add("CabinetbarTabWireFill", 4, kCabinetBar, [wire](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(-1, H(b) - 9.75f, W(b) + 1, H(b) - 8.25f, 0), wire);
  });
  add("CabinetbarTabWireRight", 8, kCabinetBar, [wire](TBitmap& b, TPainter& p) {
    p.Fill(Outline(RoundRect(-20, H(b) - 9, W(b) - 1, H(b) + 20, 6), 1.5f), wire);
  });
  const TColor baseFill[3] = {Rgb(0x40454D), Rgb(0x4D535C), Rgb(0x363A41)};
  const char* baseNames[3] = {"FaviconBase", "FaviconBaseHovered", "FaviconBasePressed"};
  for (int s = 0; s < 3; ++s) {
    const TColor fill = baseFill[s];
    add(baseNames[s], 22, 22, [fill, s](TBitmap& b, TPainter& p) {
      p.Shadow(Circle(W(b) / 2, H(b) / 2 + 1, 9), Rgb(0x000000, 0.35f), 1.5f);
      p.Fill(Circle(W(b) / 2, H(b) / 2, 10), fill);
      p.Fill(Outline(Circle(W(b) / 2, H(b) / 2, 10), 1), s == 1 ? WithAlpha(kAccent, 0.8f) : WithAlpha(kWhite, 0.12f));
    });
  }
  add("CabinetbarItemHovered", 30, 22, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(0.5f, 0.5f, W(b) - 0.5f, H(b) - 0.5f, 10.5f), WithAlpha(kWhite, 0.12f));
  });
  add("CabinetbarItemPressed", 30, 22, [](TBitmap& b, TPainter& p) {
    p.Fill(RoundRect(0.5f, 0.5f, W(b) - 0.5f, H(b) - 0.5f, 10.5f), WithAlpha(kAccent, 0.35f));
  });
  add("CabinetbarItemMinHovered", 22, 22, [](TBitmap& b, TPainter& p) {
    p.Fill(Circle(W(b) / 2, H(b) / 2, 10.5f), WithAlpha(kWhite, 0.12f));
  });
  add("CabinetbarItemMinPressed", 22, 22, [](TBitmap& b, TPainter& p) {
    p.Fill(Circle(W(b) / 2, H(b) / 2, 10.5f), WithAlpha(kAccent, 0.35f));
  });
  (void)kInk;
  return c;
}

}  // namespace

std::unique_ptr<TBitmap> DrawPicture(const std::string& key) {
  static const auto catalogue = Catalogue();
  const auto it = catalogue.find(key);
  return it == catalogue.end() ? nullptr : it->second();
}

}  // namespace qx::skin
