// SPDX-License-Identifier: Apache-2.0
// Distributed transforms against the same problem on one process in double precision, by the definition: bricks,
// pencils and slabs as input, all ways of heFFTe to move data, r2c along every direction, cosines and sines of both
// types.
#include <heffte_backend_qfftf.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <random>

namespace {

using heffte::box3d;
using complex = std::complex<double>;
const double pi = 3.14159265358979323846;
int checks = 0;

// The sum over all points of a line, applied along every direction of the world.
template <typename value>
std::vector<value> transformed(box3d<> const& world, std::vector<value> data,
                               std::function<value(int j, int k, int n)> const& weight) {
    const int n[3] = {world.size[0], world.size[1], world.size[2]}, step[3] = {1, n[0], n[0] * n[1]};
    for (int d = 0; d < 3; ++d) {
        std::vector<value> matrix(std::size_t(n[d]) * n[d]), line(n[d]);
        for (int k = 0; k < n[d]; ++k)
            for (int j = 0; j < n[d]; ++j) matrix[k * n[d] + j] = weight(j, k, n[d]);
        for (int i = 0; i < n[0] * n[1] * n[2]; ++i) {
            if (i / step[d] % n[d] != 0) continue;
            for (int k = 0; k < n[d]; ++k) {
                line[k] = 0;
                for (int j = 0; j < n[d]; ++j) line[k] += matrix[k * n[d] + j] * data[i + j * step[d]];
            }
            for (int k = 0; k < n[d]; ++k) data[i + k * step[d]] = line[k];
        }
    }
    return data;
}

// The elements of a box, whose first direction varies fastest, out of the world.
template <typename to, typename from>
std::vector<to> part(box3d<> const& world, box3d<> const& box, std::vector<from> const& data) {
    std::vector<to> result;
    for (int z = box.low[2]; z <= box.high[2]; ++z)
        for (int y = box.low[1]; y <= box.high[1]; ++y)
            for (int x = box.low[0]; x <= box.high[0]; ++x)
                result.push_back(to(data[(z * world.size[1] + y) * world.size[0] + x]));
    return result;
}

// The relative L2 error over all processes; a process may have no elements.
template <typename value, typename reference>
void expect_near(std::vector<value> const& result, std::vector<reference> const& wanted, std::string const& what) {
    double sums[2] = {0, 0}, total[2];
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        sums[0] += std::norm(reference(result[i]) - wanted[i]);
        sums[1] += std::norm(wanted[i]);
    }
    MPI_Allreduce(sums, total, 2, MPI_DOUBLE, MPI_SUM, MPI_COMM_WORLD);
    const double error = std::sqrt(total[0] / total[1]);
    ++checks;
    if (result.size() == wanted.size() and error < 4e-7) return;
    std::fprintf(stderr, "process %d: %s: relative error %g, %zu elements, %zu wanted\n",
                 heffte::mpi::comm_rank(MPI_COMM_WORLD), what.c_str(), error, result.size(), wanted.size());
    MPI_Abort(MPI_COMM_WORLD, 1);
}

struct division {
    const char* name;
    std::array<int, 3> grid;
};

std::vector<division> divisions(int processes) {
    const box3d<> cube({0, 0, 0}, {31, 31, 31});
    return {{"bricks", heffte::proc_setup_min_surface(cube, processes)},
            {"pencils", {1, processes % 2 == 0 ? 2 : 1, processes % 2 == 0 ? processes / 2 : processes}},
            {"slabs", {1, 1, processes}}};
}

template <typename tag>
std::vector<heffte::plan_options> ways() {
    std::vector<heffte::plan_options> result;
    for (bool pencils : {true, false})
        for (bool reorder : {true, false})
            for (auto algorithm : {heffte::reshape_algorithm::alltoallv, heffte::reshape_algorithm::p2p_plined}) {
                heffte::plan_options options = heffte::default_options<tag>();
                options.use_pencils = pencils;
                options.use_reorder = reorder;
                options.algorithm = algorithm;
                result.push_back(options);
            }
    return result;
}

std::string text(box3d<> const& world, division const& d, heffte::plan_options const& o) {
    return std::to_string(world.size[0]) + " x " + std::to_string(world.size[1]) + " x " +
           std::to_string(world.size[2]) + ", " + d.name + (o.use_pencils ? ", through pencils" : ", through slabs") +
           (o.use_reorder ? ", reordered" : ", strided") + ", algorithm " +
           std::to_string(static_cast<int>(o.algorithm));
}

template <typename value>
std::vector<value> noise(std::size_t count);
template <>
std::vector<double> noise(std::size_t count) {
    std::mt19937 random(1);
    std::vector<double> result(count);
    for (double& x : result) x = static_cast<float>(random() / 4294967296.0 - 0.5);
    return result;
}
template <>
std::vector<complex> noise(std::size_t count) {
    const auto parts = noise<double>(2 * count);
    std::vector<complex> result(count);
    for (std::size_t i = 0; i < count; ++i) result[i] = {parts[2 * i], parts[2 * i + 1]};
    return result;
}

void check_complex(box3d<> const& world) {
    const int me = heffte::mpi::comm_rank(MPI_COMM_WORLD), processes = heffte::mpi::comm_size(MPI_COMM_WORLD);
    const auto data = noise<complex>(world.count());
    const auto wanted = transformed<complex>(world, data, [](int j, int k, int n) {
        return std::polar(1.0, -2 * pi * (static_cast<long long>(j) * k % n) / n);
    });
    const auto real = noise<double>(world.count());
    const auto real_wanted = transformed<complex>(
        world, std::vector<complex>(real.begin(), real.end()),
        [](int j, int k, int n) { return std::polar(1.0, -2 * pi * (static_cast<long long>(j) * k % n) / n); });
    for (auto const& d : divisions(processes))
        for (auto const& o : ways<heffte::backend::qfftf>()) {
            const auto boxes = heffte::split_world(world, d.grid);
            heffte::fft3d<heffte::backend::qfftf> fft(boxes[me], boxes[me], MPI_COMM_WORLD, o);
            const auto input = part<std::complex<float>>(world, boxes[me], data);
            const auto output = fft.forward(input);
            expect_near(output, part<complex>(world, boxes[me], wanted), "c2c forward, " + text(world, d, o));
            expect_near(fft.backward(output, heffte::scale::full), part<complex>(world, boxes[me], data),
                        "c2c and back, " + text(world, d, o));
            for (int direction = 0; direction < 3; ++direction) {
                const auto half = world.r2c(direction);
                const auto half_boxes = heffte::split_world(half, d.grid);
                heffte::fft3d_r2c<heffte::backend::qfftf> r2c(boxes[me], half_boxes[me], direction, MPI_COMM_WORLD, o);
                const std::string what = " along " + std::to_string(direction) + ", " + text(world, d, o);
                const auto spectrum = r2c.forward(part<float>(world, boxes[me], real));
                expect_near(spectrum, part<complex>(world, half_boxes[me], real_wanted), "r2c" + what);
                expect_near(r2c.backward(spectrum, heffte::scale::full), part<double>(world, boxes[me], real),
                            "c2r" + what);
            }
        }
}

template <typename tag>
void check_trigonometric(box3d<> const& world, std::function<double(int, int, int)> const& weight) {
    const int me = heffte::mpi::comm_rank(MPI_COMM_WORLD), processes = heffte::mpi::comm_size(MPI_COMM_WORLD);
    const auto data = noise<double>(world.count());
    const auto wanted = transformed<double>(world, data, weight);
    for (auto const& d : divisions(processes))
        for (auto const& o : ways<tag>()) {
            const auto boxes = heffte::split_world(world, d.grid);
            heffte::rtransform<tag> transform(boxes[me], boxes[me], MPI_COMM_WORLD, o);
            std::vector<float> output(transform.size_outbox()), back(transform.size_inbox());
            const auto input = part<float>(world, boxes[me], data);
            transform.forward(input.data(), output.data());
            const std::string what = heffte::backend::name<tag>() + ", " + text(world, d, o);
            expect_near(output, part<double>(world, boxes[me], wanted), what);
            transform.backward(output.data(), back.data(), heffte::scale::full);
            expect_near(back, part<double>(world, boxes[me], data), what + " and back");
        }
}

// A refusal throws and says why: a cosine transform of type I over one point, on one process.
void check_refusal() {
    std::string message;
    try {
        const box3d<> line({0, 0, 0}, {0, 3, 3});
        heffte::qfftf_backend::executor_r2r<QSL_FFTF_REDFT00, QSL_FFTF_REDFT00> refused(nullptr, line, 0);
    } catch (std::runtime_error const& error) {
        message = error.what();
    }
    const bool told = message.find("at least 2 points") != std::string::npos and
                      message.find("guru r2r dims=1:1:1 batch=16:1:1 wide kinds=3 inplace") != std::string::npos;
    ++checks;
    if (told) return;
    std::fprintf(stderr, "the refusal says '%s'\n", message.c_str());
    MPI_Abort(MPI_COMM_WORLD, 1);
}

// Double precision throws in fft3d_r2c too, which doesn't ask for the types when it is compiled.
void check_double_at_run_time() {
    const int me = heffte::mpi::comm_rank(MPI_COMM_WORLD), processes = heffte::mpi::comm_size(MPI_COMM_WORLD);
    const box3d<> world({0, 0, 0}, {7, 7, 7});
    const auto boxes = heffte::split_world(world, {1, 1, processes}),
               half = heffte::split_world(world.r2c(0), {1, 1, processes});
    heffte::fft3d_r2c<heffte::backend::qfftf> fft(boxes[me], half[me], 0, MPI_COMM_WORLD);
    std::vector<double> in(fft.size_inbox());
    std::vector<complex> out(fft.size_outbox());
    ++checks;
    try {
        fft.forward(in.data(), out.data());
    } catch (std::runtime_error const&) {
        return;
    }
    std::fprintf(stderr, "r2c in double precision wasn't refused\n");
    MPI_Abort(MPI_COMM_WORLD, 1);
}

}  // namespace

int main(int argc, char** argv) {
    MPI_Init(&argc, &argv);
    for (box3d<> world :
         {box3d<>({0, 0, 0}, {15, 11, 12}), box3d<>({0, 0, 0}, {31, 15, 11}), box3d<>({0, 0, 0}, {9, 6, 40})})
        check_complex(world);
    const box3d<> world({0, 0, 0}, {9, 11, 15});
    check_trigonometric<heffte::backend::qfftf_cos>(
        world, [](int j, int k, int n) { return 2 * std::cos(pi * (j + 0.5) * k / n); });
    check_trigonometric<heffte::backend::qfftf_sin>(
        world, [](int j, int k, int n) { return 2 * std::sin(pi * (j + 0.5) * (k + 1) / n); });
    check_trigonometric<heffte::backend::qfftf_cos1>(
        world, [](int j, int k, int n) { return (j == 0 or j == n - 1 ? 1 : 2) * std::cos(pi * j * k / (n - 1)); });
    check_trigonometric<heffte::backend::qfftf_sin1>(
        world, [](int j, int k, int n) { return 2 * std::sin(pi * (j + 1) * (k + 1) / (n + 1)); });
    check_refusal();
    check_double_at_run_time();
    if (heffte::mpi::comm_rank(MPI_COMM_WORLD) == 0)
        std::printf("%d comparisons on %d processes\n", checks, heffte::mpi::comm_size(MPI_COMM_WORLD));
    const int wanted = 3 * 3 * 8 * 8 + 4 * 3 * 8 * 2 + 2;
    MPI_Finalize();
    return checks == wanted ? 0 : 1;
}
