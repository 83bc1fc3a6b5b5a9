// Loading a C3D take of 1,000 markers by 20,000 frames, beside reading its bytes.
// The file is written once per run by c3dgen into a temporary folder.
#include "bench/benchmarks.h"
#include "bench/limits.h"

#include "host/c3d/c3dtake.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

const int c3dMarkers = 1000, c3dFrames = 20000;

// The generated file, or why there is none.
struct GeneratedFile {
    QTemporaryDir dir;
    QString path;
    QString problem;
    double bytes = 0;
};

const GeneratedFile& generated()
{
    static std::unique_ptr<GeneratedFile> file;
    if (file)
        return *file;
    file = std::make_unique<GeneratedFile>();
    if (!file->dir.isValid()) {
        file->problem = QStringLiteral("no temporary folder");
        return *file;
    }
    const QString path = file->dir.filePath(QStringLiteral("take.c3d"));
    QProcess gen;
    gen.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    gen.start(QStringLiteral(TAV_C3DGEN),
              {path, "--markers", QString::number(c3dMarkers), "--frames", QString::number(c3dFrames)});
    if (!gen.waitForFinished(300000) || gen.exitStatus() != QProcess::NormalExit || gen.exitCode() != 0) {
        file->problem = QStringLiteral("c3dgen failed: ") + gen.errorString();
        return *file;
    }
    file->path = path;
    file->bytes = double(QFileInfo(path).size());
    return *file;
}

void load(benchmark::State& state)
{
    const GeneratedFile& f = generated();
    if (f.path.isEmpty()) {
        state.SkipWithError(f.problem.toStdString().c_str());
        return;
    }
    for (auto _ : state) {
        TAV::Frames take;
        QString error;
        if (!C3D::loadTake(f.path, take, &error)) {
            state.SkipWithError(error.toStdString().c_str());
            return;
        }
        benchmark::DoNotOptimize(take.constData());
    }
    state.counters["bytes"] = f.bytes;
}

void readBytes(benchmark::State& state)
{
    const GeneratedFile& f = generated();
    if (f.path.isEmpty()) {
        state.SkipWithError(f.problem.toStdString().c_str());
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(readFile(f.path));
    state.counters["bytes"] = f.bytes;
}

} // namespace

void registerC3D()
{
    const std::string size = "/" + std::to_string(c3dMarkers) + "x" + std::to_string(c3dFrames);
    for (auto* b : {benchmark::RegisterBenchmark(("c3d/load" + size).c_str(), load),
                    benchmark::RegisterBenchmark(("limit/read-file" + size).c_str(), readBytes)})
        // Long enough that the first load, which also pays the kernel for the take's
        // fresh memory, is not the one reported: the steady cost of a load.
        b->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond)->MinTime(2);
}
