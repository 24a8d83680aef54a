#include "mirror/FloatingButton.h"

namespace morla::mirror {

view::PanelSpec FloatingButtonPanel::spec() {
  view::PanelSpec spec;
  spec.name = "FloatingButtonPanel";
  spec.contentRect = {};
  spec.styleMask = view::kNonactivatingPanel;
  spec.level = view::Level::floating;
  spec.collectionBehaviour = view::kCanJoinAllSpaces | view::kFullScreenAuxiliary;
  spec.isOpaque = false;
  spec.hasShadow = false;
  spec.isMovableByBackground = true;
  // It stands beside Capture One, which is when this program is not active.
  spec.hidesOnDeactivate = false;
  return spec;
}

view::Node ScreenIconView() {
  view::Drawing icon;
  icon.size = {20, 18};
  icon.steps = {
      view::StrokeRoundedRect{{{1, 5}, {18, 12}}, 2, 1.6, view::kWhite},  // the screen's frame
      view::FillRoundedRect{{{8.8, 2}, {2.4, 3}}, 0, view::kWhite},       // its foot
      view::FillRoundedRect{{{5.5, 0.8}, {9, 1.6}}, 0.8, view::kWhite},   // the stand
  };
  return view::node(view::Canvas{icon});
}

view::Node FloatingButtonView() {
  view::Drawing disc;
  disc.size = kFloatingButtonSize;
  disc.steps = {view::FillOval{{{0, 0}, kFloatingButtonSize}, view::kBlack}};
  return view::node(view::ZStack{{view::node(view::Canvas{disc}), ScreenIconView()}}).labelled("Fenêtre");
}

}  // namespace morla::mirror
