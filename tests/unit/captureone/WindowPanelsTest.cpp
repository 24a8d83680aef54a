// Recipes, the processing queue and the document in the simulator's window.

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>

#include "WindowFixture.h"

namespace morla::captureone {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::SizeIs;

TEST_F(WindowTest, AClickOnTheBoxOfARecipeEnablesIt) {
  auto* recipes = find<QListView>("Recettes");
  auto const box = recipes->visualRect(recipes->model()->index(1, 0)).topLeft() + QPoint(14, 15);
  ASSERT_FALSE(document().recipes.all()[1].isEnabled);
  QTest::mouseClick(recipes->viewport(), Qt::LeftButton, {}, box);
  EXPECT_TRUE(document().recipes.all()[1].isEnabled);
  QTest::mouseClick(recipes->viewport(), Qt::LeftButton, {}, box);
  EXPECT_FALSE(document().recipes.all()[1].isEnabled);
  QTest::mouseClick(recipes->viewport(), Qt::LeftButton, {}, centre(recipes, 1));
  EXPECT_FALSE(document().recipes.all()[1].isEnabled) << "its name is no box";
  QTest::keyClick(recipes, Qt::Key_Space);
  EXPECT_TRUE(document().recipes.all()[1].isEnabled);
}

TEST_F(WindowTest, RecipesComeAndGoByTheirButtonsAndCanBeRenamed) {
  auto* recipes = find<QListView>("Recettes");
  auto* remove = find<QPushButton>("Supprimer la recette");
  EXPECT_FALSE(remove->isEnabled());
  find<QPushButton>("Ajouter une recette")->click();
  ASSERT_THAT(document().recipes.all(), SizeIs(4));
  EXPECT_EQ(document().recipes.all()[3].name, "Recette 4");
  EXPECT_EQ(recipes->currentIndex().row(), 3);
  ASSERT_TRUE(recipes->model()->setData(recipes->currentIndex(), "Tirage"));
  EXPECT_EQ(document().recipes.all()[3].name, "Tirage");
  EXPECT_FALSE(recipes->model()->setData(recipes->currentIndex(), ""));
  ASSERT_TRUE(remove->isEnabled());
  remove->click();
  EXPECT_EQ(document().recipes.findNamed("Tirage"), nullptr);
  EXPECT_EQ(recipes->model()->rowCount(), 3);
}

TEST_F(WindowTest, RecipesFollowScripts) {
  auto* recipes = find<QListView>("Recettes");
  auto const text = [recipes](int row, int role) { return recipes->model()->index(row, 0).data(role).toString(); };
  EXPECT_EQ(text(1, Qt::ToolTipRole), "JPEG web\nJPEG 75 · max. 2\u202f048 px\nSortie/Web");
  change([](Document& document) {
    auto* recipe = document.recipes.find(document.recipes.all()[1].handle);
    recipe->name = "Grand";
    recipe->format = FileFormat::tiff;
    recipe->bits = 16;
    recipe->rootFolder = RootFolder::customLocation;
    recipe->rootLocation = "/media/disque";
    return true;
  });
  EXPECT_EQ(text(1, Qt::ToolTipRole), "Grand\nTIFF 16 bits · max. 2\u202f048 px\n/media/disque/Web");
  ASSERT_FALSE(controls_.set("recipes.enabled", "Grand"));
  auto const isOn = [recipes](int row) {
    return recipes->model()->index(row, 0).data(Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
  };
  EXPECT_FALSE(isOn(0));
  EXPECT_TRUE(isOn(1));
  ASSERT_FALSE(controls_.set("recipe.delete", "Grand"));
  EXPECT_EQ(recipes->model()->rowCount(), 2);
}

class QueueInWindow : public WindowTest {
 protected:
  static std::vector<OutputJob> jobs(std::size_t count) {
    std::vector<OutputJob> made(count);
    for (std::size_t i = 0; i < count; ++i) {
      made[i].image.name = "Image " + std::to_string(i);
      made[i].recipe.name = "JPEG";
    }
    return made;
  }
  std::vector<QString> rows() {
    std::vector<QString> texts;
    for (int row = 0; row < list_->model()->rowCount(); ++row) {
      texts.push_back(list_->model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
    }
    return texts;
  }

  ProcessingQueue& queue_ = model_.queue();
  QListView* list_ = find<QListView>("File de traitement");
  QProgressBar* bar_ = find<QProgressBar>("Avancement du traitement");
};

TEST_F(QueueInWindow, TellsWhatIsInWorkWhatWaitsWhatIsDoneAndWhatFailed) {
  EXPECT_TRUE(says("Aucun fichier à écrire"));
  queue_.add(jobs(3));
  EXPECT_TRUE(says("0 sur 3 fichiers"));
  EXPECT_THAT(rows(), ElementsAre("Image 0, JPEG, en cours", "Image 1, JPEG, en attente", "Image 2, JPEG, en attente"));
  queue_.finish(queue_.jobs()[0].id);
  EXPECT_TRUE(says("1 sur 3 fichiers"));
  EXPECT_EQ(bar_->value() * 3, bar_->maximum());
  EXPECT_THAT(rows(), ElementsAre("Image 1, JPEG, en cours", "Image 2, JPEG, en attente"));
  queue_.fail(queue_.jobs()[0].id, "no room");
  EXPECT_THAT(rows(), ElementsAre("Image 1, JPEG, échec", "Image 2, JPEG, en cours"));
  queue_.setStall(ProcessingQueue::Stall::on);
  EXPECT_TRUE(says("2 sur 3 fichiers, à l’arrêt"));
  EXPECT_THAT(rows(), Contains("Image 2, JPEG, en attente"));
  queue_.finish(queue_.jobs()[0].id);
  EXPECT_TRUE(says("3 fichiers traités"));
  EXPECT_EQ(bar_->value(), bar_->maximum());
}

TEST_F(QueueInWindow, ListsTheNextFilesOfThousands) {
  queue_.add(jobs(5000));
  EXPECT_TRUE(says("0 sur 5\u202f000 fichiers"));
  EXPECT_THAT(rows(), SizeIs(100));
  queue_.finish(queue_.jobs()[0].id);
  EXPECT_EQ(rows().front(), "Image 1, JPEG, en cours");
  EXPECT_EQ(rows().back(), "Image 100, JPEG, en attente");
}

TEST_F(QueueInWindow, StallAndDelayAreShownAndChangedHere) {
  auto* stall = find<QCheckBox>("Traitement à l’arrêt");
  ASSERT_FALSE(controls_.set("process.stall", "true"));
  EXPECT_TRUE(stall->isChecked());
  stall->click();
  EXPECT_EQ(controls_.get("process.stall"), "false");
  auto* delay = find<QDoubleSpinBox>("Attente par fichier");
  ASSERT_FALSE(controls_.set("process.delay", "1.5"));
  EXPECT_EQ(delay->value(), 1.5);
  delay->setValue(0.25);
  EXPECT_EQ(controls_.get("process.delay"), "0.25");
}

TEST_F(WindowTest, ShowsTheCaptureFolderAsScriptsAreToldOfIt) {
  auto const shows = [this](QString const& text) {
    for (auto const* each : window_.findChildren<QLabel*>()) {
      if (each->accessibleName() == text) return true;
    }
    return false;
  };
  ASSERT_FALSE(controls_.set("captures", "/Users/x/Capture"));
  EXPECT_TRUE(shows("/Users/x/Capture"));
  ASSERT_FALSE(controls_.set("captures.form", "hfs"));
  EXPECT_TRUE(shows(QString::fromStdString(*controls_.get("captures"))));
  ASSERT_FALSE(controls_.set("captures.form", "missing"));
  EXPECT_TRUE(shows("Aucun (« missing value »)"));
  change([](Document& document) {
    document.captureCounter = 42;
    return true;
  });
  EXPECT_TRUE(says("n° 42"));
}

TEST_F(WindowTest, TheDocumentIsChangedHereAsByKeys) {
  auto* count = find<QSpinBox>("Nombre d’images");
  count->setValue(5000);
  EXPECT_EQ(controls_.get("variants.count"), "5000");
  ASSERT_FALSE(controls_.set("variants.count", "7"));
  EXPECT_EQ(count->value(), 7);
  find<QSpinBox>("Compteur de captures")->setValue(9);
  EXPECT_TRUE(says("n° 9"));
  auto* folder = find<QLineEdit>("Dossier de capture");
  folder->clear();
  QTest::keyClicks(folder, "/a/b");
  EXPECT_NE(controls_.get("captures"), "/a/b") << "half-typed paths are nobody's folder";
  QTest::keyClick(folder, Qt::Key_Return);
  EXPECT_EQ(controls_.get("captures"), "/a/b");
  auto* form = find<QComboBox>("Forme du dossier de capture");
  ASSERT_FALSE(controls_.set("captures.form", "hfs"));
  EXPECT_EQ(form->currentText(), "HFS");
}

}  // namespace
}  // namespace morla::captureone
