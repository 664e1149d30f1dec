#pragma once

// The host's COM-like interfaces. Only the operations the module calls are named; the
// gaps are reserved slots so that every named operation keeps its position.

#include <cstdint>

#include "base/Unknown.h"

#define QX_RESERVED(n) \
  virtual HResult QX_STDCALL Reserved##n() { return kFail; }

namespace qx {

using Text = const char16_t*;  // zero-terminated UTF-16 going in
using AnsiText = const char*;

struct IQxIString;
struct IQxIVariant;
struct IQxIStringArray;
struct IQxIStringDictionary;
struct IQxITab;
struct IQxITabGroup;
struct IQxITabSection;
struct IQxIBrowser;
struct IQxIXmlElement;
struct IQxIServiceCore;

struct IQxIString : IUnknown {
  static constexpr TGUID IID = MakeGuid("81657AA2-EF8E-4853-9F14-3BCDD2A3FF8C");
  QX_RESERVED(1)
  QX_RESERVED(2)
  // The pointer lives as long as the object.
  virtual HResult QX_STDCALL GetText(Text* text) = 0;  // 3
};

struct IQxIVariant : IUnknown {
  static constexpr TGUID IID = MakeGuid("C64ABD50-0949-482F-8A60-BAA421DD3877");
  virtual HResult QX_STDCALL AsBoolean(std::uint8_t* value, std::int32_t reserved) = 0;  // 1
  QX_RESERVED(2)
  virtual HResult QX_STDCALL AsInt64(std::int64_t* value, std::int32_t r1, std::int32_t r2) = 0;  // 3
  QX_RESERVED(4)
  QX_RESERVED(5)
  virtual HResult QX_STDCALL AsUnknown(IUnknown** value) = 0;  // 6
  QX_RESERVED(7)
  virtual HResult QX_STDCALL AsText(IQxIString** value) = 0;  // 8
};

struct IQxIHandle : IUnknown {
  static constexpr TGUID IID = MakeGuid("6D1C7A0E-52B4-4C38-9E1F-0A8B3C2D4E51");
  virtual HResult QX_STDCALL GetValue(std::uintptr_t* value) = 0;  // 1
};

struct IQxIArray : IUnknown {
  static constexpr TGUID IID = MakeGuid("3B6F767D-ABF9-4D42-9116-650936B83F23");
  virtual HResult QX_STDCALL GetItem(std::int32_t index, IUnknown** item) = 0;  // 1
  virtual HResult QX_STDCALL SetItem(std::int32_t index, IUnknown* item) = 0;   // 2
  virtual HResult QX_STDCALL GetCount(std::int32_t* count) = 0;                 // 3
  QX_RESERVED(4)
  virtual HResult QX_STDCALL Add(IUnknown* item) = 0;                                // 5
  virtual HResult QX_STDCALL Insert(std::int32_t index, IUnknown* item) = 0;         // 6
  virtual HResult QX_STDCALL Delete(std::int32_t index) = 0;                         // 7
  virtual HResult QX_STDCALL Exchange(std::int32_t a, std::int32_t b) = 0;           // 8
  virtual HResult QX_STDCALL Move(std::int32_t from, std::int32_t to) = 0;           // 9
  virtual HResult QX_STDCALL IndexOf(IUnknown* item, std::int32_t* index) = 0;       // 10
  QX_RESERVED(11)
};

struct IQxIStringArray : IUnknown {
  static constexpr TGUID IID = MakeGuid("E0CD70E8-D4F1-4B5E-B7F5-7F0DB166B662");
  virtual HResult QX_STDCALL GetItem(std::int32_t index, IQxIString** item) = 0;  // 1
  virtual HResult QX_STDCALL SetItem(std::int32_t index, Text item) = 0;          // 2
  virtual HResult QX_STDCALL GetCount(std::int32_t* count) = 0;                   // 3
  QX_RESERVED(4)
  virtual HResult QX_STDCALL Add(Text item) = 0;                                  // 5
  virtual HResult QX_STDCALL Insert(std::int32_t index, Text item) = 0;           // 6
  virtual HResult QX_STDCALL Delete(std::int32_t index) = 0;                      // 7
  virtual HResult QX_STDCALL Exchange(std::int32_t a, std::int32_t b) = 0;        // 8
  virtual HResult QX_STDCALL Move(std::int32_t from, std::int32_t to) = 0;        // 9
  // Status 1 means not found.
  virtual HResult QX_STDCALL IndexOf(Text item, std::int32_t* index) = 0;  // 10
  QX_RESERVED(11)
};

struct IQxIStringDictionary : IUnknown {
  static constexpr TGUID IID = MakeGuid("3245EA4B-3D0A-46FC-B0CB-0B50A1E96E82");
  virtual HResult QX_STDCALL GetValue(Text key, IQxIString** value) = 0;  // 1
  virtual HResult QX_STDCALL SetValue(Text key, Text value) = 0;          // 2
  QX_RESERVED(3)
  QX_RESERVED(4)
  virtual HResult QX_STDCALL GetKeys(IQxIStringArray** keys) = 0;                                   // 5
  virtual HResult QX_STDCALL GetKeysAndValues(IQxIStringArray** keys, IQxIStringArray** values) = 0;  // 6
  QX_RESERVED(7)
  QX_RESERVED(8)
  QX_RESERVED(9)
  QX_RESERVED(10)
};

struct IQxIDictionary : IUnknown {
  static constexpr TGUID IID = MakeGuid("0EB7235E-2D43-4054-B197-3905A101B678");
  virtual HResult QX_STDCALL GetValue(Text key, IUnknown** value) = 0;                           // 1
  virtual HResult QX_STDCALL SetValue(Text key, IUnknown* value) = 0;                            // 2
  virtual HResult QX_STDCALL GetCount(std::int32_t* count) = 0;                                  // 3
  virtual HResult QX_STDCALL Remove(Text key) = 0;                                               // 4
  virtual HResult QX_STDCALL GetKeys(IQxIStringArray** keys) = 0;                                // 5
  virtual HResult QX_STDCALL GetKeysAndValues(IQxIStringArray** keys, IQxIArray** values) = 0;    // 6
  virtual HResult QX_STDCALL MergeOverwrite(IQxIDictionary* other) = 0;                          // 7
  virtual HResult QX_STDCALL MergeExisting(IQxIDictionary* other) = 0;                           // 8
  virtual HResult QX_STDCALL MergeMissing(IQxIDictionary* other) = 0;                            // 9
};

struct IQxIStringBuilder : IUnknown {
  static constexpr TGUID IID = MakeGuid("A4E777C4-A9ED-4A1E-9F61-0AB4AD9E0D18");
  virtual HResult QX_STDCALL Create(IQxIString** out, Text text) = 0;  // 1
};

struct IQxIVariantBuilder : IUnknown {
  static constexpr TGUID IID = MakeGuid("730B681D-332A-4BAE-A4A9-436C03B71E4E");
  virtual HResult QX_STDCALL FromBoolean(IQxIVariant** out, bool value) = 0;  // 1
  QX_RESERVED(2)
  virtual HResult QX_STDCALL FromInt64(IQxIVariant** out, std::uint32_t low, std::uint32_t high) = 0;  // 3
  QX_RESERVED(4)
  QX_RESERVED(5)
  QX_RESERVED(6)
  QX_RESERVED(7)
  virtual HResult QX_STDCALL FromText(IQxIVariant** out, Text text) = 0;  // 8
};

struct IQxIHandleBuilder : IUnknown {
  static constexpr TGUID IID = MakeGuid("E52208E8-5685-485D-955F-482B34901864");
  // kind is always 65537 from this module.
  virtual HResult QX_STDCALL Create(IQxIHandle** out, std::uintptr_t value, std::int32_t kind, std::int32_t r1,
                                    std::int32_t r2) = 0;  // 1
};

struct IQxIEvent : IUnknown {
  static constexpr TGUID IID = MakeGuid("17E3A2CF-C166-46EB-8F51-BCCEBE84AFD7");
  virtual HResult QX_STDCALL GetParameters(IQxIStringDictionary** parameters) = 0;  // 1
  QX_RESERVED(2)
  QX_RESERVED(3)
  QX_RESERVED(4)
};

struct IQxIEventListener : IUnknown {
  static constexpr TGUID IID = MakeGuid("A9EC9C7C-81F7-4F44-B809-1B0BDB266804");
  virtual HResult QX_STDCALL OnEvent(Text eventId, IQxIEvent* event) = 0;  // 1
};

struct IQxIAction : IUnknown {
  static constexpr TGUID IID = MakeGuid("F55C06E1-D408-46A0-A2DC-F7948CDB14CE");
  virtual HResult QX_STDCALL Execute(IQxIStringDictionary* parameters) = 0;  // 1
};

struct IQxIEventService : IUnknown {
  static constexpr TGUID IID = MakeGuid("5C31A50D-F886-42FE-BABB-31B446DB99E2");
  virtual HResult QX_STDCALL AddListener(Text eventId, IQxIEventListener* listener, std::uint8_t timing) = 0;  // 1
  virtual HResult QX_STDCALL RemoveListener(Text eventId, IQxIEventListener* listener) = 0;                 // 2
  QX_RESERVED(3)
  QX_RESERVED(4)
  virtual HResult QX_STDCALL Fire(Text eventId, IQxIStringDictionary* parameters, IQxIStringArray** results) = 0;  // 5
  virtual HResult QX_STDCALL Post(Text eventId, Text target, IQxIStringDictionary* parameters, std::int32_t wait,
                                  std::int32_t r1, std::int32_t r2) = 0;  // 6
};

struct IQxIActionManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("742BFAA5-9A25-4F77-9203-F32B48C6BD55");
  // kind is always 1 from this module.
  virtual HResult QX_STDCALL AddAction(std::int32_t kind, Text actionId, IQxIAction* action, std::int32_t r) = 0;  // 1
  virtual HResult QX_STDCALL RemoveAction(Text actionId) = 0;  // 2
};

struct IQxIServiceCore : IUnknown {
  static constexpr TGUID IID = MakeGuid("3543B645-3042-477E-8164-76D04B817329");
  virtual HResult QX_STDCALL QueryService(AnsiText name, IUnknown** object) = 0;  // 1
  QX_RESERVED(2)
  QX_RESERVED(3)
};

struct IQxIPluginService : IUnknown {
  static constexpr TGUID IID = MakeGuid("132F0238-6142-4708-8FCB-E8C957357BAB");
  virtual HResult QX_STDCALL GetPlugin(AnsiText name, IQxIServiceCore* core, IUnknown** object) = 0;  // 1
  QX_RESERVED(2)
  QX_RESERVED(3)
};

struct IQxIFactoryService : IUnknown {
  static constexpr TGUID IID = MakeGuid("523C6A67-241C-452F-A580-F1AA5EEF4D67");
  virtual HResult QX_STDCALL CreateObject(Text name, IUnknown** object) = 0;  // 1
};

struct IQxIPlugin : IUnknown {
  static constexpr TGUID IID = MakeGuid("222611B3-0848-419A-A382-B2FE7313C25A");
  virtual HResult QX_STDCALL GetGuid(IQxIString** guid) = 0;        // 1
  virtual HResult QX_STDCALL GetVersion(IQxIString** version) = 0;  // 2
};

struct IQxIControl : IUnknown {
  static constexpr TGUID IID = MakeGuid("65EE36B3-39E8-438A-AD0A-C8040A2A5372");
  virtual HResult QX_STDCALL CreateControl(IQxIHandle* parent, IQxIHandle** control) = 0;  // 1
  virtual HResult QX_STDCALL DestroyControl() = 0;                                        // 2
  virtual HResult QX_STDCALL ControlReservedA() = 0;                                      // 3
  virtual HResult QX_STDCALL ControlReservedB() = 0;                                      // 4
  virtual HResult QX_STDCALL GetControlGuid(IQxIString** guid) = 0;                       // 5
  virtual HResult QX_STDCALL GetChildFrameLeft(std::int32_t* value) = 0;                  // 6
  virtual HResult QX_STDCALL GetChildFrameRight(std::int32_t* value) = 0;                 // 7
  virtual HResult QX_STDCALL GetChildFrameTop(std::int32_t* value) = 0;                   // 8
  virtual HResult QX_STDCALL GetChildFrameBottom(std::int32_t* value) = 0;                // 9
};

struct IQxIPropertyService : IUnknown {
  static constexpr TGUID IID = MakeGuid("E978A027-AE14-437C-9512-9EB6478F4E51");
  QX_RESERVED(1)
  // Status kInvalidArg: no such key.
  virtual HResult QX_STDCALL GetProperty(Text key, IQxIString** value) = 0;  // 2
  QX_RESERVED(3)
  QX_RESERVED(4)
  virtual HResult QX_STDCALL SetProperty(Text key, Text value) = 0;  // 5
  virtual HResult QX_STDCALL DeleteProperty(Text key) = 0;           // 6
  QX_RESERVED(7)
  QX_RESERVED(8)
  QX_RESERVED(9)
  virtual HResult QX_STDCALL EnumerateKeys(Text prefix, IQxIStringArray** keys) = 0;  // 10
  QX_RESERVED(11)
  virtual HResult QX_STDCALL SetPropertyAlternate(Text key, Text value) = 0;  // 12
  QX_RESERVED(13)
  QX_RESERVED(14)
  QX_RESERVED(15)
  QX_RESERVED(16)
  QX_RESERVED(17)
  QX_RESERVED(18)
  QX_RESERVED(19)
  QX_RESERVED(20)
};

struct IQxIDirectoryService : IUnknown {
  static constexpr TGUID IID = MakeGuid("185D5CC1-3FBC-42CA-B202-127831798AD0");
  virtual HResult QX_STDCALL GetPath(Text key, IQxIString** path) = 0;  // 1
};

struct IQxIGraphicResourceService : IUnknown {
  static constexpr TGUID IID = MakeGuid("26DDE873-08DE-4DE1-A4F3-D7F72B242CDA");
  QX_RESERVED(1)
  QX_RESERVED(2)
  virtual HResult QX_STDCALL ResolvePath(Text url, IQxIString** path, std::int32_t reserved) = 0;  // 3
  QX_RESERVED(4)
  QX_RESERVED(5)
  QX_RESERVED(6)
  QX_RESERVED(7)
  QX_RESERVED(8)
  QX_RESERVED(9)
};

struct IQxIGraphicsService : IUnknown {
  static constexpr TGUID IID = MakeGuid("584832EA-A9C7-47A8-9468-899826085E07");
};

struct IQxITranslatorService : IUnknown {
  static constexpr TGUID IID = MakeGuid("7546DCAB-5CD5-47B8-8895-E15E13E7230F");
  QX_RESERVED(1)
  QX_RESERVED(2)
  QX_RESERVED(3)
  QX_RESERVED(4)
  virtual HResult QX_STDCALL GetLocale(IQxIString** locale) = 0;                // 5
  virtual HResult QX_STDCALL Translate(Text key, IQxIString** translated) = 0;  // 6
  QX_RESERVED(7)
};

struct IQxIWindow : IUnknown {
  static constexpr TGUID IID = MakeGuid("6D1C7A0E-52B4-4C38-9E1F-0A8B3C2D4E52");
  virtual HResult QX_STDCALL GetHandle(IQxIHandle** handle) = 0;  // 1
};

struct IQxIWindowService : IUnknown {
  static constexpr TGUID IID = MakeGuid("5386CC64-524B-41A0-9F1A-9B7AF277999F");
  virtual HResult QX_STDCALL GetMainWindow(IQxIWindow** window) = 0;  // 1
};

struct IQxIXmlElement : IUnknown {
  static constexpr TGUID IID = MakeGuid("3A6F9DE8-F063-41AB-9A7A-9EDDFD954743");
  QX_RESERVED(1)
  QX_RESERVED(2)
  QX_RESERVED(3)
  virtual HResult QX_STDCALL GetAttribute(Text name, IQxIString** value, Text fallback) = 0;  // 4
  QX_RESERVED(5) QX_RESERVED(6) QX_RESERVED(7) QX_RESERVED(8) QX_RESERVED(9) QX_RESERVED(10)
  QX_RESERVED(11) QX_RESERVED(12) QX_RESERVED(13) QX_RESERVED(14) QX_RESERVED(15) QX_RESERVED(16)
  QX_RESERVED(17) QX_RESERVED(18) QX_RESERVED(19) QX_RESERVED(20) QX_RESERVED(21) QX_RESERVED(22)
  QX_RESERVED(23) QX_RESERVED(24) QX_RESERVED(25) QX_RESERVED(26) QX_RESERVED(27) QX_RESERVED(28)
  QX_RESERVED(29) QX_RESERVED(30) QX_RESERVED(31) QX_RESERVED(32) QX_RESERVED(33) QX_RESERVED(34)
  QX_RESERVED(35) QX_RESERVED(36) QX_RESERVED(37) QX_RESERVED(38) QX_RESERVED(39) QX_RESERVED(40)
  QX_RESERVED(41) QX_RESERVED(42) QX_RESERVED(43) QX_RESERVED(44) QX_RESERVED(45) QX_RESERVED(46)
  virtual HResult QX_STDCALL GetChild(std::int32_t index, IQxIXmlElement** child) = 0;  // 47
  virtual HResult QX_STDCALL GetChildCount(std::int32_t* count) = 0;                    // 48
};

// What a widget control's owner hands out.
struct IQxIWidgetOwner : IUnknown {
  static constexpr TGUID IID = MakeGuid("6D1C7A0E-52B4-4C38-9E1F-0A8B3C2D4E53");
  QX_RESERVED(1)
  QX_RESERVED(2)
  QX_RESERVED(3)
  QX_RESERVED(4)
  virtual HResult QX_STDCALL GetElement(IQxIXmlElement** element) = 0;  // 5
};

struct IQxIWidgetControl : IUnknown {
  static constexpr TGUID IID = MakeGuid("8A4D872F-DECC-4E94-BA8E-1CB3618470C5");
  virtual HResult QX_STDCALL GetOwner(IUnknown** owner) = 0;  // 1
};

struct IQxIWidgetService : IUnknown {
  static constexpr TGUID IID = MakeGuid("1B531FC7-6F2A-43BB-8178-A4C20CAD7267");
  QX_RESERVED(1)
  QX_RESERVED(2)
  virtual HResult QX_STDCALL GetWidget(Text id, IUnknown** widget) = 0;  // 3
  QX_RESERVED(4)
  QX_RESERVED(5)
  QX_RESERVED(6)
};

struct IQxITab : IUnknown {
  static constexpr TGUID IID = MakeGuid("FACA76DF-5FD0-4FBA-A8F5-9740BAECE278");
  virtual HResult QX_STDCALL GetGuid(IQxIString** guid) = 0;          // 1
  virtual HResult QX_STDCALL GetTabGroup(IQxITabGroup** group) = 0;   // 2
  virtual HResult QX_STDCALL GetBrowser(IQxIBrowser** browser) = 0;   // 3
  virtual HResult QX_STDCALL SetBrowser(IQxIBrowser* browser) = 0;    // 4
  QX_RESERVED(5)
  virtual HResult QX_STDCALL GetValue(Text key, IQxIVariant** value) = 0;  // 6
  virtual HResult QX_STDCALL SetValue(Text key, IQxIVariant* value) = 0;   // 7
  QX_RESERVED(8)
};

struct IQxIBrowser : IUnknown {
  static constexpr TGUID IID = MakeGuid("F1B0AA5B-127A-437F-A5EB-0D58DAE20069");
  virtual HResult QX_STDCALL GetObject(IUnknown** object) = 0;                 // 1
  virtual HResult QX_STDCALL GetValue(Text key, IQxIVariant** value) = 0;      // 2
  virtual HResult QX_STDCALL SetValue(Text key, IQxIVariant* value) = 0;       // 3
  virtual HResult QX_STDCALL Execute(Text command, IQxIStringDictionary* parameters, std::int32_t r) = 0;  // 4
};

struct IQxITabSection : IUnknown {
  static constexpr TGUID IID = MakeGuid("38254C9F-7B73-4497-B89C-32846AA95733");
  QX_RESERVED(1) QX_RESERVED(2) QX_RESERVED(3) QX_RESERVED(4) QX_RESERVED(5) QX_RESERVED(6) QX_RESERVED(7)
  virtual HResult QX_STDCALL GetTabCount(std::int32_t* count) = 0;  // 8
  QX_RESERVED(9)
  virtual HResult QX_STDCALL GetTab(std::int32_t index, IQxITab** tab) = 0;  // 10
  QX_RESERVED(11) QX_RESERVED(12) QX_RESERVED(13) QX_RESERVED(14) QX_RESERVED(15) QX_RESERVED(16)
};

struct IQxITabGroup : IUnknown {
  static constexpr TGUID IID = MakeGuid("0466B966-A213-4E33-B3D8-F64DB8938A3B");
  virtual HResult QX_STDCALL GetGuid(IQxIString** guid) = 0;              // 1
  virtual HResult QX_STDCALL GetValue(Text key, IQxIString** value) = 0;  // 2
  virtual HResult QX_STDCALL SetValue(Text key, Text value) = 0;          // 3
  virtual HResult QX_STDCALL AddTab(IQxITab* tab) = 0;                    // 4
  QX_RESERVED(5)
  virtual HResult QX_STDCALL InsertTab(IQxITab* tab, std::int32_t index) = 0;  // 6
  QX_RESERVED(7)
  virtual HResult QX_STDCALL GetTabCount(std::int32_t* count) = 0;  // 8
  QX_RESERVED(9)
  virtual HResult QX_STDCALL GetActiveTab(IQxITab** tab) = 0;  // 10
  QX_RESERVED(11)
  virtual HResult QX_STDCALL SelectTab(IQxITab* tab) = 0;                          // 12
  virtual HResult QX_STDCALL IndexOfTab(IQxITab* tab, std::int32_t* index) = 0;    // 13
  virtual HResult QX_STDCALL GetTab(std::int32_t index, IQxITab** tab) = 0;        // 14
  QX_RESERVED(15)
  // The tab that a tab menu is about; nil when none.
  virtual HResult QX_STDCALL SetMenuTab(IQxITab* tab) = 0;  // 16
  QX_RESERVED(17)
  virtual HResult QX_STDCALL GetSectionCount(std::int32_t* count) = 0;                     // 18
  virtual HResult QX_STDCALL GetSection(std::int32_t index, IQxITabSection** section) = 0;  // 19
  QX_RESERVED(20)
  QX_RESERVED(21)
  QX_RESERVED(22)
  virtual HResult QX_STDCALL InsertSectionWithTab(std::int32_t sectionIndex, IQxITab* tab) = 0;  // 23
  virtual HResult QX_STDCALL MoveTabToSection(IQxITab* tab, IQxITabSection* section, std::int32_t index) = 0;  // 24
  QX_RESERVED(25)
  QX_RESERVED(26)
};

struct IQxITabDock : IUnknown {
  static constexpr TGUID IID = MakeGuid("6D1C7A0E-52B4-4C38-9E1F-0A8B3C2D4E54");
  virtual HResult QX_STDCALL TabIdOf(IQxITab* tab, std::int32_t* id) = 0;  // 1
  virtual HResult QX_STDCALL TabById(std::int32_t id, IQxITab** tab) = 0;  // 2
  QX_RESERVED(3) QX_RESERVED(4) QX_RESERVED(5) QX_RESERVED(6) QX_RESERVED(7) QX_RESERVED(8) QX_RESERVED(9)
  QX_RESERVED(10)
  virtual HResult QX_STDCALL Navigate(Text uri, IQxITabGroup* group, IQxIStringDictionary* parameters,
                                      IQxITab** tab) = 0;  // 11
  QX_RESERVED(12)
  virtual HResult QX_STDCALL TabByBrowserId(Text idText, IQxITab** tab) = 0;  // 13
  QX_RESERVED(14) QX_RESERVED(15) QX_RESERVED(16) QX_RESERVED(17) QX_RESERVED(18) QX_RESERVED(19)
  QX_RESERVED(20) QX_RESERVED(21) QX_RESERVED(22) QX_RESERVED(23) QX_RESERVED(24) QX_RESERVED(25)
  QX_RESERVED(26) QX_RESERVED(27) QX_RESERVED(28) QX_RESERVED(29) QX_RESERVED(30) QX_RESERVED(31)
  QX_RESERVED(32) QX_RESERVED(33) QX_RESERVED(34) QX_RESERVED(35) QX_RESERVED(36) QX_RESERVED(37)
  QX_RESERVED(38) QX_RESERVED(39)
  virtual std::int32_t QX_STDCALL GetGroupKind(IQxITab* tab) = 0;                                  // 40
  virtual HResult QX_STDCALL FirstContentIndex(IQxITabGroup* group, std::int32_t* index) = 0;      // 41
  QX_RESERVED(42) QX_RESERVED(43) QX_RESERVED(44) QX_RESERVED(45) QX_RESERVED(46) QX_RESERVED(47)
  QX_RESERVED(48)
  // 0 means shown.
  virtual std::int32_t QX_STDCALL IsTabHidden(IQxITab* tab) = 0;  // 49
  QX_RESERVED(50) QX_RESERVED(51) QX_RESERVED(52) QX_RESERVED(53) QX_RESERVED(54) QX_RESERVED(55)
  virtual HResult QX_STDCALL GetDockKind(std::int32_t* kind) = 0;  // 56
  virtual HResult QX_STDCALL Refresh(std::int32_t mode) = 0;       // 57
  QX_RESERVED(58)
  // 2 locks, 1 unlocks.
  virtual HResult QX_STDCALL SetLock(std::int32_t state) = 0;             // 59
  virtual HResult QX_STDCALL GetNewTabGroup(IQxITabGroup** group) = 0;    // 60
};

struct IQxITabManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("A2D606F2-EE0F-401E-AE87-7BD5E5174F40");
  virtual HResult QX_STDCALL TabByGuid(Text guid, IQxITab** tab) = 0;  // 1
  QX_RESERVED(2)
  virtual HResult QX_STDCALL CreateTab(IQxITab** tab) = 0;  // 3
  QX_RESERVED(4) QX_RESERVED(5) QX_RESERVED(6) QX_RESERVED(7)
  virtual HResult QX_STDCALL GetActiveTab(IQxITab** tab) = 0;  // 8
  virtual HResult QX_STDCALL SetActiveTab(IQxITab* tab) = 0;   // 9
  QX_RESERVED(10) QX_RESERVED(11)
  virtual HResult QX_STDCALL GetTabGroupCount(std::int32_t* count) = 0;  // 12
  QX_RESERVED(13) QX_RESERVED(14)
  virtual HResult QX_STDCALL GetTabGroup(std::int32_t index, IQxITabGroup** group) = 0;  // 15
  virtual HResult QX_STDCALL GetActiveTabGroup(IQxITabGroup** group) = 0;                // 16
  QX_RESERVED(17) QX_RESERVED(18)
  virtual HResult QX_STDCALL SetActiveTabGroup(IQxITabGroup* group) = 0;  // 19
  QX_RESERVED(20)
  virtual HResult QX_STDCALL SetMenuTabGroup(IQxITabGroup* group) = 0;  // 21
  QX_RESERVED(22) QX_RESERVED(23)
  virtual HResult QX_STDCALL GetTabDock(IQxITabDock** dock) = 0;  // 24
  QX_RESERVED(25) QX_RESERVED(26)
};

struct IQxIBrowserList : IUnknown {
  static constexpr TGUID IID = MakeGuid("6D1C7A0E-52B4-4C38-9E1F-0A8B3C2D4E55");
  virtual HResult QX_STDCALL IdOf(IQxIBrowser* browser, std::int32_t* id) = 0;  // 1
  virtual HResult QX_STDCALL ById(std::int32_t id, IQxIBrowser** browser) = 0;  // 2
};

struct IQxIBrowserManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("1ACE7FAD-43D0-4AA0-A055-D50C55B573AA");
  QX_RESERVED(1) QX_RESERVED(2) QX_RESERVED(3) QX_RESERVED(4)
  virtual HResult QX_STDCALL CreateBrowser(Text browserGuid, Text uri, std::int32_t r, IQxIBrowser** browser) = 0;  // 5
  virtual HResult QX_STDCALL GetBrowserList(IQxIBrowserList** list) = 0;  // 6
  QX_RESERVED(7) QX_RESERVED(8)
  virtual HResult QX_STDCALL BrowserByGuid(Text guid, IQxIBrowser** browser) = 0;  // 9
};

struct IQxIPageDataManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("D7F2C115-F96F-474A-A5E7-D340BAB134E2");
  QX_RESERVED(1)
  virtual HResult QX_STDCALL SetData(Text pageGuid, Text key, Text value) = 0;  // 2
  virtual HResult QX_STDCALL DeleteData(Text pageGuid, Text key) = 0;           // 3
  QX_RESERVED(4) QX_RESERVED(5)
  virtual HResult QX_STDCALL GetData(Text pageGuid, Text key, IQxIString** value) = 0;  // 6
};

struct IQxIUriAction : IUnknown {
  static constexpr TGUID IID = MakeGuid("10392D11-657E-4C27-9A75-45EE9C0E6161");
  QX_RESERVED(1) QX_RESERVED(2) QX_RESERVED(3)
  virtual HResult QX_STDCALL GetBrowserInfo(Text uri, IQxIStringDictionary** info) = 0;  // 4
};

struct IQxIBookmarkManagerV3 : IUnknown {
  static constexpr TGUID IID = MakeGuid("862EC0F8-F203-49AB-92E2-852EA81F7E34");
  QX_RESERVED(1) QX_RESERVED(2) QX_RESERVED(3) QX_RESERVED(4) QX_RESERVED(5) QX_RESERVED(6) QX_RESERVED(7)
  QX_RESERVED(8) QX_RESERVED(9) QX_RESERVED(10) QX_RESERVED(11) QX_RESERVED(12) QX_RESERVED(13)
  QX_RESERVED(14) QX_RESERVED(15) QX_RESERVED(16) QX_RESERVED(17) QX_RESERVED(18) QX_RESERVED(19)
  QX_RESERVED(20) QX_RESERVED(21) QX_RESERVED(22)
  virtual HResult QX_STDCALL GetStatus(Text key, IQxIString** value) = 0;  // 23
  QX_RESERVED(24) QX_RESERVED(25) QX_RESERVED(26) QX_RESERVED(27) QX_RESERVED(28) QX_RESERVED(29)
  QX_RESERVED(30) QX_RESERVED(31) QX_RESERVED(32) QX_RESERVED(33) QX_RESERVED(34) QX_RESERVED(35)
  QX_RESERVED(36)
};

struct IQxIGlobalStoreItem : IUnknown {
  static constexpr TGUID IID = MakeGuid("B355CC2C-342D-47AC-89B6-661820DB6405");
  virtual HResult QX_STDCALL GetSize(std::int32_t* size) = 0;     // 1
  virtual HResult QX_STDCALL GetData(const void** data) = 0;      // 2
};

struct IQxIGlobalStore : IUnknown {
  static constexpr TGUID IID = MakeGuid("6D1C7A0E-52B4-4C38-9E1F-0A8B3C2D4E56");
  virtual HResult QX_STDCALL GetItem(Text key, IUnknown** item) = 0;  // 1
  QX_RESERVED(2)
  QX_RESERVED(3)
  virtual HResult QX_STDCALL RemoveItem(Text key) = 0;  // 4
};

struct IQxIGlobalStorageService : IUnknown {
  static constexpr TGUID IID = MakeGuid("E3BE055B-4096-426A-9D00-AC67F37648A2");
  virtual HResult QX_STDCALL GetStore(IQxIGlobalStore** store) = 0;  // 1
};

struct IQxIXmlService : IUnknown {
  static constexpr TGUID IID = MakeGuid("C165D4BD-DDF2-4826-BE8A-6907C07B82FF");
  virtual HResult QX_STDCALL Parse(Text text, IQxIXmlElement** element) = 0;  // 1
};

// The host's popup menus: documents registered under an id, opened later by
// "XmlWidget.MenuOpen" with that id.
struct IQxIXmlWidgetPopup : IUnknown {
  static constexpr TGUID IID = MakeGuid("20E135E9-9964-407E-BCD2-F52F551C0803");
  // Registers the menu document under id, replacing one registered before.
  virtual HResult QX_STDCALL RegisterPopup(Text id, IQxIXmlElement* root) = 0;  // 1
  // Forgets the menu of that id; kFalse when there was none.
  virtual HResult QX_STDCALL RemovePopup(Text id) = 0;  // 2
};

// A widget that the host's main window has built.
struct IQxIClientWidget : IUnknown {
  static constexpr TGUID IID = MakeGuid("3E1C5B7A-94D2-4F0B-A6C8-2D7F1E09B5C4");
  virtual HResult QX_STDCALL GetClassName(IQxIString** name) = 0;  // 1
  // The widget's rectangle in the main window's client coordinates; empty while hidden.
  virtual HResult QX_STDCALL GetRect(std::int32_t* left, std::int32_t* top, std::int32_t* right,
                                     std::int32_t* bottom) = 0;  // 2
};

// The main window's widgets, looked up by the value of one of their attributes.
struct IQxIClientWidgetFactory : IUnknown {
  static constexpr TGUID IID = MakeGuid("B6B8823E-3F1A-4BF0-8055-D59E91417D75");
  // The first built widget whose attribute (such as "aclass") has that value;
  // flags 1 asks only among built widgets. kFalse and nil when none.
  virtual HResult QX_STDCALL FindWidget(Text value, Text attribute, std::int32_t flags,
                                        IQxIClientWidget** widget) = 0;  // 1
};

// The host's favicon store. A fetch answers later through "FaviconManager.Changed".
struct IQxIFaviconManagerV3 : IUnknown {
  static constexpr TGUID IID = MakeGuid("58C445E5-8B84-446E-A019-891A41A050DE");
  // Starts a fetch of the icon of a page URI (or a "favicon://" key).
  virtual HResult QX_STDCALL RequestFavicon(Text uri) = 0;  // 1
  // The file the store keeps for a URI; kFalse and no string when it has none.
  virtual HResult QX_STDCALL GetFaviconFile(Text uri, IQxIString** path) = 0;  // 2
};

// Host services that later parts of the module call through operations of their own.
#define QX_OPAQUE_INTERFACE(Name, Guid)          \
  struct Name : IUnknown {                       \
    static constexpr TGUID IID = MakeGuid(Guid); \
  };

QX_OPAQUE_INTERFACE(IQxIXmlWidgetManager, "D9901ADD-C243-41CF-958F-AB3AE55EE975")
QX_OPAQUE_INTERFACE(IQxIHistoryManager, "1095A80A-B32B-48EA-B4B4-E52EC01E9DCB")
QX_OPAQUE_INTERFACE(IQxIWindowOrderManager, "2571770D-E7B5-4FF2-BF90-0B92673B3495")
QX_OPAQUE_INTERFACE(IQxIUserAgentManager, "4E24330C-063A-4708-B899-B2F6AB9A4D16")
QX_OPAQUE_INTERFACE(IQxIInputHandler, "1C076276-F3A2-11DF-BDCE-001EC20A914A")
QX_OPAQUE_INTERFACE(IQxIMigemoSearchPlugin, "66DC0BF6-4BEF-4A82-98AD-95873C861ABB")
QX_OPAQUE_INTERFACE(IHTMLDocument2, "332C4425-26CB-11D0-B483-00C04FD90119")

#undef QX_OPAQUE_INTERFACE

// The cabinet's knowledge of tabs: whether a tab has a site icon (0 when it has), the
// id of its site's domain, and the title to show for it.
struct IQxICabinetManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("E3A0F44C-9E36-446D-90AE-E5C7BB688433");
  virtual HResult QX_STDCALL HasCabinetIcon(IQxITab* tab) = 0;                      // 1
  virtual HResult QX_STDCALL GetDomainId(IQxITab* tab, IQxIString** domain) = 0;     // 2
  virtual HResult QX_STDCALL GetDisplayTitle(IQxITab* tab, IQxIString** title) = 0;  // 3
  // 0 while the cabinet screen is showing.
  virtual HResult QX_STDCALL GetCabinetState() = 0;  // 4
};

// The search engines: searches for a keyword with the engine of that id. The options
// dictionary travels untyped, as the host's variant of an object.
struct IQxISearchManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("9B8C0674-E9EA-4A82-9C2F-57A86E02B9B4");
  virtual HResult QX_STDCALL Search(Text engineGuid, Text keyword, IUnknown* options) = 0;  // 1
};

// The history of the search box.
struct IQxISearchHistoryManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("CAD37AA2-9CD4-41DF-850E-40EC514250B4");
  virtual HResult QX_STDCALL Add(Text keyword) = 0;  // 1
};

// The platform's browser control: four dispatch slots, then the browser's own; only the
// document is read.
struct IWebBrowser2 : IUnknown {
  static constexpr TGUID IID = MakeGuid("D30C1661-CDAF-11D0-8A3E-00C04FC9E26E");
  QX_RESERVED(1) QX_RESERVED(2) QX_RESERVED(3) QX_RESERVED(4)    // dispatch
  QX_RESERVED(5) QX_RESERVED(6) QX_RESERVED(7) QX_RESERVED(8)    // GoBack .. GoSearch
  QX_RESERVED(9) QX_RESERVED(10) QX_RESERVED(11) QX_RESERVED(12)  // Navigate .. Stop
  QX_RESERVED(13) QX_RESERVED(14) QX_RESERVED(15)                 // Application, Parent, Container
  virtual HResult QX_STDCALL get_Document(IUnknown** document) = 0;  // 16
};

}  // namespace qx
