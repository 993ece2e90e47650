#pragma once

// What the fuzz targets share: reading decisions from the input bytes, a check that stops the
// run with a message, and a Qt application that lives as long as the process.

#include <QApplication>
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <unistd.h>

// A broken promise of the code under test: say which and stop, so that the fuzzer keeps the input.
#define FUZZ_CHECK(condition, ...)                                                                           \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            std::fprintf(stderr, "%s:%d: check failed: %s\n  ", __FILE__, __LINE__, #condition);             \
            std::fprintf(stderr, __VA_ARGS__);                                                               \
            std::fprintf(stderr, "\n");                                                                      \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (0)

namespace vorn {
namespace fuzz {

// Hands out the input bytes as decisions. When the bytes run out every answer is the smallest one,
// so short inputs describe small cases and every input is a valid case.
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool empty() const { return m_pos >= m_size; }

    std::uint8_t byte() { return empty() ? 0 : m_data[m_pos++]; }

    template <class T> T integral()
    {
        static_assert(std::is_integral<T>::value, "integers only");
        using U = typename std::make_unsigned<T>::type;
        U value = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i)
            value = static_cast<U>((value << 8) | byte());
        return static_cast<T>(value);
    }

    // A number in [low, high], read from as few bytes as the span needs.
    int range(int low, int high)
    {
        if (high <= low)
            return low;
        const unsigned span = static_cast<unsigned>(high - low);
        unsigned value = 0;
        for (unsigned left = span; left; left >>= 8)
            value = (value << 8) | byte();
        return low + static_cast<int>(value % (span + 1));
    }

    bool flag() { return byte() & 1; }

    double real()
    {
        switch (range(0, 7)) {
        case 0:
            return 0.0;
        case 1:
            return std::numeric_limits<double>::infinity();
        case 2:
            return std::numeric_limits<double>::quiet_NaN();
        case 3:
            return std::numeric_limits<double>::lowest();
        case 4:
            return std::numeric_limits<double>::denorm_min();
        default: {
            const std::uint64_t bits = integral<std::uint64_t>();
            double value;
            std::memcpy(&value, &bits, sizeof value);
            return value;
        }
        }
    }

    // Up to maxLength bytes as they stand (any byte, NUL included).
    std::string bytes(int maxLength)
    {
        const int length = range(0, maxLength);
        std::string out;
        for (int i = 0; i < length && !empty(); ++i)
            out.push_back(static_cast<char>(byte()));
        return out;
    }

    // Everything that is left.
    QByteArray rest()
    {
        QByteArray out(reinterpret_cast<const char*>(m_data + m_pos), static_cast<int>(m_size - m_pos));
        m_pos = m_size;
        return out;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_pos = 0;
};

// The application of a fuzz program: offscreen, with a private runtime folder, made once and kept
// for the life of the process (the fuzzer never returns from its loop).
inline void startApplication(int* argc, char*** argv)
{
    if (QCoreApplication::instance())
        return;
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    if (!std::getenv("XDG_RUNTIME_DIR")) {
        static QByteArray runtimeDir =
            (QDir::tempPath() + QStringLiteral("/vorn-fuzz-runtime-%1").arg(getuid())).toLocal8Bit();
        QDir().mkpath(QString::fromLocal8Bit(runtimeDir));
        QFile::setPermissions(QString::fromLocal8Bit(runtimeDir),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setenv("XDG_RUNTIME_DIR", runtimeDir.constData(), 1);
    }
    // QApplication keeps a reference to argc: it must outlive the application. The application
    // goes at exit, before Qt's own statics, so that Qt releases what it holds (fonts among it).
    static int keptArgc = 1;
    static char* keptArgv[] = {argc && *argc > 0 ? (*argv)[0] : const_cast<char*>("fuzz"), nullptr};
    static std::unique_ptr<QApplication> application(new QApplication(keptArgc, keptArgv));
}

} // namespace fuzz
} // namespace vorn
