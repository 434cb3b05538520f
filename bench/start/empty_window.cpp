// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The least that a Qt program with a main window can be; bench_start compares with it.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.resize(1240, 760);
    window.show();
    return QApplication::exec();
}
