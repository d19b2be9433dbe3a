#pragma once

/// A 4 by 4 matrix in single precision, by rows; row 3 holds the translation. The identity by default.
class MFloatMatrix {
public:
    MFloatMatrix() = default;
    explicit MFloatMatrix(const float values[4][4]) {
        for (int row = 0; row < 4; ++row) {
            for (int column = 0; column < 4; ++column) {
                matrix[row][column] = values[row][column];
            }
        }
    }

    float operator()(unsigned int row, unsigned int column) const { return matrix[row][column]; }
    float* operator[](unsigned int row) { return matrix[row]; }
    const float* operator[](unsigned int row) const { return matrix[row]; }

    float matrix[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};
