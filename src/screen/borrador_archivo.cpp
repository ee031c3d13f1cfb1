#include "screen/borrador_archivo.h"

#include "text/fnv.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <ctime>
#include <fstream>
#include <iterator>
#include <utility>

namespace fs = std::filesystem;

namespace quorvel {
namespace {

constexpr std::string_view FINAL = ".borrador";

std::string hexa(std::uint64_t n, int digitos) {
    std::string texto(static_cast<std::size_t>(digitos), '0');
    for (auto c = texto.rbegin(); c != texto.rend(); ++c, n >>= 4U) *c = "0123456789abcdef"[n & 15U];
    return texto;
}

std::string suma(std::string_view texto) { return hexa(fnv1a(texto), 16); }

void escapar(std::string& a, std::string_view texto) {
    for (const char c : texto) switch (c) {
        case '\\': a += "\\\\"; break;
        case '\t': a += "\\t"; break;
        case '\n': a += "\\n"; break;
        case '\r': a += "\\r"; break;
        default: a += c;
        }
}

std::vector<std::string> separar(std::string_view registro) {
    std::vector<std::string> campos(1);
    for (std::size_t i = 0; i < registro.size(); ++i) {
        const char c = registro[i];
        if (c == '\t')
            campos.emplace_back();
        else if (c == '\\' && i + 1 < registro.size()) {
            const char e = registro[++i];
            campos.back() += e == 't' ? '\t' : e == 'n' ? '\n' : e == 'r' ? '\r' : e;
        } else
            campos.back() += c;
    }
    return campos;
}

std::optional<std::size_t> numero(const std::string& texto) {
    std::size_t n = 0;
    const auto [fin, error] = std::from_chars(texto.data(), texto.data() + texto.size(), n);
    if (error != std::errc{} || fin != texto.data() + texto.size()) return std::nullopt;
    return n;
}

/// @return false for a record that does not fit what is there
bool aplicar_registro(const std::vector<std::string>& r, ContenidoBorrador& c) {
    if (r[0] == "campo" && r.size() == 3) {
        c.campos[r[1]] = r[2];
    } else if (r[0] == "pendiente" && r.size() == 2) {
        c.pendiente = r[1];
    } else if (r[0] == "filas" && r.size() >= 3) {
        const auto desde = numero(r[1]), quitadas = numero(r[2]);
        if (!desde || !quitadas || *desde > c.filas.size() || *quitadas > c.filas.size() - *desde)
            return false;
        const auto lugar = c.filas.begin() + static_cast<std::ptrdiff_t>(*desde);
        const auto tras = c.filas.erase(lugar, lugar + static_cast<std::ptrdiff_t>(*quitadas));
        c.filas.insert(tras, r.begin() + 3, r.end());
    } else {
        return false;
    }
    return true;
}

bool aplicar(std::string_view linea, ContenidoBorrador& c) {
    for (std::size_t i = 0; i <= linea.size();) {
        const std::size_t fin = std::min(linea.find('\r', i), linea.size());
        if (!aplicar_registro(separar(linea.substr(i, fin - i)), c)) return false;
        i = fin + 1;
    }
    return true;
}

} // namespace

void LoteBorrador::registro(const std::vector<std::string>& campos) {
    if (!registros_.empty()) registros_ += '\r';
    for (std::size_t i = 0; i < campos.size(); ++i) {
        if (i > 0) registros_ += '\t';
        escapar(registros_, campos[i]);
    }
}

std::string LoteBorrador::linea() const { return suma(registros_) + ' ' + registros_ + '\n'; }

void LoteBorrador::campo(const std::string& nombre, const std::string& valor) {
    registro({"campo", nombre, valor});
}

void LoteBorrador::filas(std::size_t desde, std::size_t quitadas, const std::vector<std::string>& nuevas) {
    std::vector<std::string> campos{"filas", std::to_string(desde), std::to_string(quitadas)};
    campos.insert(campos.end(), nuevas.begin(), nuevas.end());
    registro(campos);
}

void LoteBorrador::pendiente(const std::string& fila) { registro({"pendiente", fila}); }

std::optional<ArchivoBorrador> ArchivoBorrador::crear(const fs::path& carpeta, const std::string& grupo) {
    std::error_code error;
    if (fs::create_directories(carpeta, error))
        fs::permissions(carpeta, fs::perms::owner_all, error); // others need not see that there are drafts
    std::string ruta = (carpeta / (grupo + "_XXXXXX")).string() + std::string(FINAL);
    const int fd = ::mkostemps(ruta.data(), static_cast<int>(FINAL.size()), O_CLOEXEC | O_APPEND); // 0600
    if (fd < 0) return std::nullopt;
    ::flock(fd, LOCK_EX);
    return ArchivoBorrador(ruta, fd);
}

std::optional<ArchivoBorrador> ArchivoBorrador::tomar(const fs::path& archivo) {
    const int fd = ::open(archivo.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) return std::nullopt;
    struct stat s {};
    const bool mio = ::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::fstat(fd, &s) == 0 && S_ISREG(s.st_mode) &&
                     s.st_nlink > 0; // not taken and removed by another program meanwhile
    if (mio) return ArchivoBorrador(archivo, fd);
    ::close(fd);
    return std::nullopt;
}

ArchivoBorrador::ArchivoBorrador(ArchivoBorrador&& o) noexcept
    : ruta_(std::move(o.ruta_)), fd_(std::exchange(o.fd_, -1)) {}

ArchivoBorrador& ArchivoBorrador::operator=(ArchivoBorrador&& o) noexcept {
    soltar();
    ruta_ = std::move(o.ruta_);
    fd_ = std::exchange(o.fd_, -1);
    return *this;
}

ArchivoBorrador::~ArchivoBorrador() { soltar(); }

void ArchivoBorrador::soltar() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}

bool ArchivoBorrador::anotar(const LoteBorrador& lote) {
    const off_t antes = ::lseek(fd_, 0, SEEK_END);
    const std::string bytes = lote.linea();
    for (std::size_t n = 0; n < bytes.size();) {
        const ssize_t escritos = ::write(fd_, bytes.data() + n, bytes.size() - n);
        if (escritos < 0 && errno == EINTR) continue;
        if (escritos <= 0) {
            if (antes >= 0) (void)!::ftruncate(fd_, antes); // half a line would hide all later ones
            return false;
        }
        n += static_cast<std::size_t>(escritos);
    }
    // two drafts of one key press: the file system's own clock is too coarse to tell the later one
    timespec cuando[2]{{0, UTIME_OMIT}, {}};
    ::clock_gettime(CLOCK_REALTIME, &cuando[1]);
    (void)::futimens(fd_, cuando);
    return true;
}

std::optional<ContenidoBorrador> ArchivoBorrador::leer() const {
    std::ifstream entrada(ruta_, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(entrada), {}};
    ContenidoBorrador contenido;
    bool alguno = false;
    const std::string_view todo = bytes;
    for (std::size_t i = 0; i < todo.size();) {
        const std::size_t fin = todo.find('\n', i);
        if (fin == std::string_view::npos || fin < i + 17) break;
        const std::string_view texto = todo.substr(i + 17, fin - i - 17);
        if (todo.substr(i, 16) != suma(texto) || !aplicar(texto, contenido)) break;
        alguno = true;
        i = fin + 1;
    }
    if (!alguno) return std::nullopt;
    return contenido;
}

void ArchivoBorrador::borrar() {
    if (fd_ < 0) return;
    ::unlink(ruta_.c_str());
    soltar();
}

std::vector<fs::path> archivos_borrador(const fs::path& carpeta, const std::string& grupo) {
    std::vector<std::pair<fs::file_time_type, fs::path>> hallados;
    std::error_code error;
    for (fs::directory_iterator i(carpeta, error), fin; !error && i != fin; i.increment(error)) {
        const std::string nombre = i->path().filename().string();
        std::error_code sin_fecha;
        if (nombre.starts_with(grupo + "_") && nombre.ends_with(FINAL))
            hallados.emplace_back(fs::last_write_time(i->path(), sin_fecha), i->path());
    }
    std::ranges::sort(hallados, std::greater<>());
    std::vector<fs::path> rutas;
    for (auto& [cuando, ruta] : hallados) rutas.push_back(std::move(ruta));
    return rutas;
}

std::string grupo_borrador(std::string_view base, int empresa, int usuario) {
    std::string nombre(base);
    if (const std::size_t esquema = nombre.find("://"); esquema != std::string::npos) {
        nombre = nombre.substr(esquema + 3, nombre.find('?') - esquema - 3);
        const std::size_t arroba = nombre.rfind('@');
        if (arroba != std::string::npos) nombre.erase(0, arroba + 1); // user and password
    } else if (nombre.find("dbname=") == std::string::npos) {
        std::error_code error;
        const fs::path ruta = fs::weakly_canonical(nombre, error);
        if (!error) nombre = ruta.string();
    }
    return suma(nombre) + "_" + std::to_string(empresa) + "_" + std::to_string(usuario);
}

} // namespace quorvel
