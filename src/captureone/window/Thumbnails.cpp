#include "captureone/window/Thumbnails.h"

#include <QMetaObject>
#include <algorithm>
#include <utility>

namespace morla::captureone {

/// A few screens full. What has been scrolled past before it was made is not wanted any more.
static constexpr std::size_t kLongestWishes = 200;

int Thumbnails::budget() {
  return 64 * 1024 * 1024;
}

Thumbnails::Thumbnails(std::shared_ptr<PictureSet const> pictures, Made made)
    : source_(std::move(pictures)), made_(std::move(made)), cache_(budget()) {
  thread_.setMaxThreadCount(1);
  thread_.setThreadPriority(QThread::LowPriority);
}

Thumbnails::~Thumbnails() {
  thread_.clear();
  thread_.waitForDone();
}

std::optional<QPixmap> Thumbnails::find(std::size_t picture, int edge) {
  Wish const wish{picture, edge};
  if (auto const* kept = cache_.object(wish)) return *kept;
  if (underWay_ == wish) return {};
  std::erase(wishes_, wish);
  wishes_.push_back(wish);
  if (wishes_.size() > kLongestWishes) wishes_.pop_front();
  if (!underWay_) makeNext();
  return {};
}

void Thumbnails::makeNext() {
  if (wishes_.empty()) return;
  // In the order in which they are looked at, and the youngest look first.
  auto const wish = wishes_.back();
  wishes_.pop_back();
  underWay_ = wish;
  thread_.start([this, wish] {
    auto const extent = source_.extent(wish.picture);
    auto const image =
        extent.isEmpty()
            ? QImage()
            : source_.render(wish.picture,
                             extent.scaled(wish.edge, wish.edge, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    QMetaObject::invokeMethod(this, [this, wish, image] { keep(wish, image); }, Qt::QueuedConnection);
  });
}

void Thumbnails::keep(Wish wish, QImage const& image) {
  underWay_.reset();
  cache_.insert(wish, new QPixmap(QPixmap::fromImage(image)), std::max(1, static_cast<int>(image.sizeInBytes())));
  makeNext();
  made_(wish.picture);
}

}  // namespace morla::captureone
