// SPDX-License-Identifier: Apache-2.0
// mpirun -n PROCESSES poisson RESULT.png [N]
// The potential of charges in a periodic box of N x N x N points (96 if N isn't given): minus its Laplacian is the
// density. Every process holds a brick; heFFTe moves the data, qfftf transforms. A second problem, whose solution is
// known, shows the error. Process 0 draws the middle plane.
#include <heffte_backend_qfftf.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <string>
#include <vector>

namespace {

using heffte::box3d;
using complex = std::complex<float>;
constexpr double pi = std::numbers::pi;

struct process {
    int number = heffte::mpi::comm_rank(MPI_COMM_WORLD), count = heffte::mpi::comm_size(MPI_COMM_WORLD);
};

// Calls do_at(x, y, z, index) for all points of a box, index counting in the order of its array.
template <class Function>
void for_each(const box3d<>& box, Function do_at) {
    size_t index = 0;
    for (int z = box.low[2]; z <= box.high[2]; ++z)
        for (int y = box.low[1]; y <= box.high[1]; ++y)
            for (int x = box.low[0]; x <= box.high[0]; ++x) do_at(x, y, z, index++);
}

class poisson_solver {
public:
    explicit poisson_solver(int n, const process& me)
        : n_(n),
          half_{{0, 0, 0}, {n / 2, n - 1, n - 1}},
          brick_(part({{0, 0, 0}, {n - 1, n - 1, n - 1}}, me)),
          spectrum_brick_(part(half_, me)),
          fft_(brick_, spectrum_brick_, 0, MPI_COMM_WORLD),
          spectrum_(fft_.size_outbox()),
          workspace_(fft_.size_workspace()) {}

    const box3d<>& brick() const { return brick_; }

    // Density to potential, both this process's brick; the box is 2 pi long. The mean of the potential is 0.
    std::vector<float> operator()(const std::vector<float>& density) {
        fft_.forward(density.data(), spectrum_.data(), workspace_.data(), heffte::scale::full);
        for_each(spectrum_brick_, [&](int x, int y, int z, size_t index) {
            const double square = std::pow(frequency(x), 2) + std::pow(frequency(y), 2) + std::pow(frequency(z), 2);
            spectrum_[index] *= square == 0 ? 0.0F : static_cast<float>(1 / square);
        });
        std::vector<float> potential(density.size());
        fft_.backward(spectrum_.data(), potential.data(), workspace_.data());
        return potential;
    }

private:
    static box3d<> part(const box3d<>& world, const process& me) {
        return heffte::split_world(world, heffte::proc_setup_min_surface(world, me.count))[me.number];
    }
    double frequency(int k) const { return k <= n_ / 2 ? k : k - n_; }

    int n_;
    box3d<> half_, brick_, spectrum_brick_;
    heffte::fft3d_r2c<heffte::backend::qfftf> fft_;
    std::vector<complex> spectrum_, workspace_;
};

double largest(double mine) {
    double all = 0;
    MPI_Allreduce(&mine, &all, 1, MPI_DOUBLE, MPI_MAX, MPI_COMM_WORLD);
    return all;
}

// sin(3x) cos(2y) sin(z) has the Laplacian -14 times itself.
double error_of_known_solution(poisson_solver& solve, int n) {
    std::vector<float> density(solve.brick().count());
    const auto known = [n](int x, int y, int z) {
        const double h = 2 * pi / n;
        return std::sin(3 * h * x) * std::cos(2 * h * y) * std::sin(h * z);
    };
    for_each(solve.brick(),
             [&](int x, int y, int z, size_t i) { density[i] = static_cast<float>(14 * known(x, y, z)); });
    const auto potential = solve(density);
    double error = 0;
    for_each(solve.brick(),
             [&](int x, int y, int z, size_t i) { error = std::max(error, std::abs(potential[i] - known(x, y, z))); });
    return largest(error);
}

// Two positive charges and a negative one, each a ball of a soft edge.
float charge_at(int x, int y, int z, int n) {
    struct ball {
        double x, y, z, charge;
    };
    double density = 0;
    for (const ball& b : {ball{0.3, 0.35, 0.5, 1}, ball{0.7, 0.4, 0.5, 1}, ball{0.5, 0.7, 0.5, -2}}) {
        const auto apart = [n](int i, double centre) { return std::abs(i / double(n) - centre); };
        const double square = std::pow(apart(x, b.x), 2) + std::pow(apart(y, b.y), 2) + std::pow(apart(z, b.z), 2);
        density += b.charge * std::exp(-square / (2 * 0.04 * 0.04));
    }
    return static_cast<float>(density);
}

// The plane z = n / 2, complete on every process: each adds the part that it holds.
std::vector<float> middle_plane(const box3d<>& brick, const std::vector<float>& values, int n) {
    std::vector<float> mine(static_cast<size_t>(n) * n), plane(mine.size());
    for_each(brick, [&](int x, int y, int z, size_t i) {
        if (z == n / 2) mine[static_cast<size_t>(y) * n + x] = values[i];
    });
    MPI_Allreduce(mine.data(), plane.data(), n * n, MPI_FLOAT, MPI_SUM, MPI_COMM_WORLD);
    return plane;
}

struct colour {
    uint8_t red, green, blue;
};

// Red above 0, blue below, a dark line at every eighth of the largest value; each point is `zoom` pixels wide.
bool draw(const std::vector<float>& plane, int n, const std::string& file) {
    constexpr int zoom = 4, levels = 8;
    float top = 0;
    for (float v : plane) top = std::max(top, std::abs(v));
    const auto value = [&](int x, int y) { return plane[static_cast<size_t>(y % n) * n + x % n] / top; };
    const auto level = [&](int x, int y) { return static_cast<int>(std::floor(value(x, y) * levels)); };

    const int width = zoom * n;
    std::vector<colour> pixels(static_cast<size_t>(width) * width);
    for (int row = 0; row < width; ++row)
        for (int column = 0; column < width; ++column) {
            const int x = column / zoom, y = row / zoom;
            const bool right = column % zoom == zoom - 1 && level(x, y) != level(x + 1, y);
            const bool below = row % zoom == zoom - 1 && level(x, y) != level(x, y + 1);
            const auto faded = static_cast<uint8_t>(255 * (1 - std::abs(value(x, y))));
            const colour tint = value(x, y) > 0 ? colour{255, faded, faded} : colour{faded, faded, 255};
            pixels[static_cast<size_t>(row) * width + column] = right || below ? colour{60, 60, 60} : tint;
        }
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = image.height = static_cast<png_uint_32>(width);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, file.c_str(), 0, pixels.data(), 0, nullptr) != 0;
}

int run(const std::string& file, int n) {
    const process me;
    poisson_solver solve(n, me);
    const double error = error_of_known_solution(solve, n);

    std::vector<float> density(solve.brick().count());
    for_each(solve.brick(), [&](int x, int y, int z, size_t i) { density[i] = charge_at(x, y, z, n); });
    const double begin = MPI_Wtime();
    const auto potential = solve(density);
    const double seconds = largest(MPI_Wtime() - begin);

    const auto plane = middle_plane(solve.brick(), potential, n);
    if (me.number != 0) return 0;
    std::printf("%d x %d x %d points on %d processes: %.4f s, largest error of a known solution %.1e\n", n, n, n,
                me.count, seconds, error);
    if (error > 1e-5) return 1;
    if (!draw(plane, n, file)) {
        std::fprintf(stderr, "poisson: %s can't be written\n", file.c_str());
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    MPI_Init(&argc, &argv);
    const int n = argc > 2 ? std::atoi(argv[2]) : 96;
    int status = 2;
    if (argc < 2 || n < 8 || n % 2 != 0)
        std::fprintf(stderr, "usage: mpirun -n PROCESSES poisson RESULT.png [N], N even and at least 8\n");
    else
        status = run(argv[1], n);
    MPI_Finalize();
    return status;
}
