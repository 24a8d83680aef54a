#pragma once

#include <QCache>
#include <QObject>
#include <QPixmap>
#include <QThreadPool>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include "captureone/pictures/PictureSource.h"

namespace morla::captureone {

/// Small pictures, made on a thread of their own when somebody looks at them, and kept as long as there is room. Main
/// thread.
class Thumbnails final : public QObject {
 public:
  using Made = std::function<void(std::size_t picture)>;

  /// `made` is called when a picture that was asked for is there.
  Thumbnails(std::shared_ptr<PictureSet const> pictures, Made made);
  ~Thumbnails() override;

  /// The picture with its longer edge of `edge` pixels; nothing when it is not there yet, and then it is made; a null
  /// one when it cannot be read.
  [[nodiscard]] std::optional<QPixmap> find(std::size_t picture, int edge);

  /// Whether there is one to be made.
  [[nodiscard]] bool isBusy() const { return underWay_.has_value(); }
  [[nodiscard]] static int budget();  ///< how much is kept, in bytes
  [[nodiscard]] int kept() const { return static_cast<int>(cache_.totalCost()); }

 private:
  struct Wish {
    std::size_t picture = 0;
    int edge = 0;
    friend bool operator==(Wish, Wish) = default;
    friend std::size_t qHash(Wish wish, std::size_t seed) { return qHashMulti(seed, wish.picture, wish.edge); }
  };
  void makeNext();
  void keep(Wish wish, QImage const& image);

  PictureSource source_;
  Made made_;
  QCache<Wish, QPixmap> cache_;
  std::deque<Wish> wishes_;
  std::optional<Wish> underWay_;
  QThreadPool thread_;
};

}  // namespace morla::captureone
