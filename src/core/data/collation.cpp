// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/collation.h"

#include <QCollator>
#include <QString>

#include <algorithm>
#include <array>
#include <vector>

namespace {

const QCollator& collator() {
    static const QCollator instance = [] {
        QCollator c(QLocale(QLocale::English, QLocale::UnitedStates));
        c.setCaseSensitivity(Qt::CaseInsensitive);
        return c;
    }();
    return instance;
}

// The places of the printable ASCII characters in the collator's order. These characters compare
// one by one, so texts of nothing else need no collator. 0 means any other character.
std::array<unsigned char, 256> makeWeights() {
    std::vector<char16_t> characters;
    for (char16_t c = 0x20; c < 0x7F; ++c) characters.push_back(c);
    const auto before = [](char16_t a, char16_t b) {
        return collator().compare(QString(QChar(a)), QString(QChar(b))) < 0;
    };
    std::stable_sort(characters.begin(), characters.end(), before);
    std::array<unsigned char, 256> weights{};
    unsigned char weight = 0;
    for (size_t i = 0; i < characters.size(); ++i) {
        if (i == 0 || before(characters[i - 1], characters[i])) ++weight;
        weights[characters[i]] = weight;
    }
    return weights;
}

// A text without the differences that do not count: case and the composition of characters.
QString folded(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()))
        .normalized(QString::NormalizationForm_D)
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C);
}

int sign(int order) { return (order > 0) - (order < 0); }

}  // namespace

int compareTexts(std::string_view a, std::string_view b) {
    static const std::array<unsigned char, 256> weights = makeWeights();
    const auto weight = [](char c) { return weights[static_cast<unsigned char>(c)]; };
    const auto isPlain = [&](std::string_view text) {
        return std::all_of(text.begin(), text.end(), [&](char c) { return weight(c) != 0; });
    };
    if (isPlain(a) && isPlain(b)) {
        const size_t common = std::min(a.size(), b.size());
        for (size_t i = 0; i < common; ++i)
            if (weight(a[i]) != weight(b[i])) return weight(a[i]) < weight(b[i]) ? -1 : 1;
        return (a.size() > b.size()) - (a.size() < b.size());
    }
    const QString foldedA = folded(a);
    const QString foldedB = folded(b);
    // The collator also ignores other differences, as between "2" and a superscript two.
    const int order = collator().compare(foldedA, foldedB);
    return sign(order != 0 ? order : foldedA.compare(foldedB));
}
