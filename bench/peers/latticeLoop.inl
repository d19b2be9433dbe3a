// A plain loop over 16 points side by side, included by the source of each compilation.
constexpr std::size_t kSide = 16;

static void weigh16(const float* coordinate, float (*weights)[kSide]) {
    for (std::size_t i = 0; i < kSide; ++i) {
        const float v = coordinate[i] + 0.5f;
        const float r = 1.0f - v;
        weights[0][i] = r * r * r;
        weights[1][i] = 3.0f * v * r * r;
        weights[2][i] = 3.0f * v * v * r;
        weights[3][i] = v * v * v;
    }
}

static void latticeLoop(const float* lattice, const float* from, float* to, std::size_t points) {
    for (std::size_t first = 0; first + kSide <= points; first += kSide) {
        float at[3][kSide];
        for (std::size_t i = 0; i < kSide; ++i) {
            for (std::size_t a = 0; a < 3; ++a) {
                at[a][i] = from[3 * (first + i) + a];
            }
        }
        float s[4][kSide];
        float t[4][kSide];
        float u[4][kSide];
        weigh16(at[0], s);
        weigh16(at[1], t);
        weigh16(at[2], u);
        float sum[3][kSide] = {};
        const float* cv = lattice;
        for (std::size_t k = 0; k < 4; ++k) {
            for (std::size_t j = 0; j < 4; ++j) {
                float tu[kSide];
                for (std::size_t i = 0; i < kSide; ++i) {
                    tu[i] = t[j][i] * u[k][i];
                }
                for (std::size_t l = 0; l < 4; ++l, cv += 3) {
                    for (std::size_t i = 0; i < kSide; ++i) {
                        const float weight = s[l][i] * tu[i];
                        sum[0][i] += weight * cv[0];
                        sum[1][i] += weight * cv[1];
                        sum[2][i] += weight * cv[2];
                    }
                }
            }
        }
        for (std::size_t i = 0; i < kSide; ++i) {
            for (std::size_t a = 0; a < 3; ++a) {
                to[3 * (first + i) + a] = sum[a][i];
            }
        }
    }
}
