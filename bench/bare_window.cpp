// The baselines the game is measured against: what any Qt 6 Widgets program of the same size
// costs on this machine.
//   bare_window          a main window with a menu bar and a dozen labels and buttons;
//   bare_window --well   a 6 x 18 well of 16-pixel squares, repainted every 100 ms.

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <cstring>

namespace {

class BareWell : public QWidget {
  public:
    BareWell() {
        setFixedSize(6 * 16, 18 * 16);
        connect(&timer_, &QTimer::timeout, this, [this] {
            ++tick_;
            update();
        });
        timer_.start(100);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        for (int c = 0; c < 6; ++c) {
            for (int r = 0; r < 18; ++r) {
                const bool falling = c == 2 && r >= tick_ % 18 - 2 && r <= tick_ % 18;
                painter.fillRect(c * 16, r * 16, 16, 16, falling ? Qt::red : Qt::white);
            }
        }
    }

  private:
    QTimer timer_;
    int tick_ = 0;
};

}  // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    const bool well = argc > 1 && std::strcmp(argv[1], "--well") == 0;
    QMainWindow window;
    window.setWindowTitle(well ? QStringLiteral("bare-well") : QStringLiteral("bare-window"));
    window.menuBar()->addMenu(QStringLiteral("&Fichier"))->addAction(QStringLiteral("&Quitter"));
    window.menuBar()->addMenu(QStringLiteral("&Aide"))->addAction(QStringLiteral("À &propos"));
    auto* central = new QWidget;
    auto* grid = new QGridLayout(central);
    if (well) {
        grid->addWidget(new BareWell, 0, 0);
    } else {
        for (int i = 0; i < 6; ++i) {
            grid->addWidget(new QLabel(QStringLiteral("Étiquette %1").arg(i)), i, 0);
            grid->addWidget(new QPushButton(QStringLiteral("Bouton %1").arg(i)), i, 1);
        }
    }
    window.setCentralWidget(central);
    window.show();
    return QApplication::exec();
}
