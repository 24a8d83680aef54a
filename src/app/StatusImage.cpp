#include "app/StatusImage.h"

namespace morla::app {

view::Drawing statusImage() {
  view::Drawing image;
  image.size = {18, 18};
  image.steps = {
      view::FillOval{{{0, 0}, {18, 18}}, view::kBlack},
      view::FillRoundedRect{{{4.5, 4.5}, {9, 9}}, 1, view::kWhite},
      view::StrokeLine{{9, 4.5}, {9, 13.5}, 0.7, view::kBlack},
      view::StrokeLine{{4.5, 9}, {13.5, 9}, 0.7, view::kBlack},
  };
  return image;
}

}  // namespace morla::app
