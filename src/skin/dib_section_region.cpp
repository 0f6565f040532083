#include "skin/dib_section_region.h"

#include "skin/dib_section.h"
#include "skin/outline_scan.h"
#include "skin/region_data.h"
#include "skin/trace.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QResource>
#include <QTemporaryFile>
#include <algorithm>

namespace {

constexpr qint64 kMostFileBytes = qint64{64} * 1024 * 1024;

RegionError Error(int number, const QString& text) {
    return {number, QCoreApplication::applicationName() + QStringLiteral(".cDIBSectionRegion"), text};
}

/// The published numbers have none for a file: this one says that the data did not get there.
RegionError NotWritten() {
    return Error(26012, QStringLiteral("Unable to get region data"));
}

/// A resource file for as long as one resource is read from it.
class ResourceLibrary {
  public:
    explicit ResourceLibrary(const QString& file) : file_(file) {
        static int count = 0;
        root_ = QStringLiteral("/library%1").arg(++count);
        open_ = QResource::registerResource(file_, root_);
    }
    ~ResourceLibrary() {
        if (open_) {
            QResource::unregisterResource(file_, root_);
        }
    }
    ResourceLibrary(const ResourceLibrary&) = delete;
    ResourceLibrary& operator=(const ResourceLibrary&) = delete;
    bool Open() const { return open_; }
    const QString& Root() const { return root_; }

  private:
    QString file_;
    QString root_;
    bool open_ = false;
};

} // namespace

void ShapeByMask(QWidget* window, const QRegion* shape) {
    if (shape == nullptr) {
        window->clearMask();
    } else {
        window->setMask(shape->isEmpty() ? QRegion(-2, -2, 1, 1) : *shape);
    }
    window->update();
    QEvent changed(ShapeChangedEvent());
    QCoreApplication::sendEvent(window, &changed);
}

QEvent::Type ShapeChangedEvent() {
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

cDIBSectionRegion::cDIBSectionRegion(DebugLog& log, ShapeWindow shape)
    : log_(log), shape_(std::move(shape)) {}

cDIBSectionRegion::~cDIBSectionRegion() {
    Destroy();
}

bool cDIBSectionRegion::Applied(const QWidget* hWnd) const {
    return hWnd != nullptr && std::find(windows_.begin(), windows_.end(), hWnd) != windows_.end();
}

void cDIBSectionRegion::SetApplied(QWidget* hWnd, bool bState) {
    Trace trace(log_, QStringLiteral("cDIBSectionRegion.Applied"),
                QStringLiteral("hWnd: %1, bState: %2")
                    .arg(HandleText(reinterpret_cast<quintptr>(hWnd)), Trace::Text(bState)));
    // A window that has been closed takes its entry with it.
    std::erase_if(windows_, [](const QPointer<QWidget>& window) { return window.isNull(); });
    if (hWnd == nullptr) {
        return;
    }
    if (bState) {
        if (!Applied(hWnd)) {
            windows_.emplace_back(hWnd);
        }
        shape_(windows_.back(), Region());
    } else {
        shape_(hWnd, nullptr);
        std::erase(windows_, hWnd);
    }
    TraceCall(log_, QStringLiteral("cDIBSectionRegion.GDI.SetWindowRgn"));
}

QWidget* cDIBSectionRegion::hWndForIndex(int lIndex) const {
    return lIndex >= 1 && lIndex <= AppliedToCount() ? windows_[static_cast<std::size_t>(lIndex - 1)].data()
                                                     : nullptr;
}

void cDIBSectionRegion::Destroy() {
    Trace trace(log_, QStringLiteral("cDIBSectionRegion.Destroy"));
    while (!windows_.empty()) {
        const QPointer<QWidget> last = windows_.back();
        if (last.isNull()) {
            windows_.pop_back();
        } else {
            SetApplied(last, false);
        }
    }
    m_hRgn.reset();
}

bool cDIBSectionRegion::Create(const cDIBSection& cDib, Colour) {
    Trace trace(log_, QStringLiteral("cDIBSectionRegion.Create"),
                QStringLiteral("cDib: ") + HandleText(cDib.hDib()));
    Destroy();
    if (cDib.DIBSectionBitsPtr() == nullptr) {
        return false;
    }
    LogOutlineScan(log_, cDib);
    m_hRgn = OutlineOf(cDib);
    return true;
}

void cDIBSectionRegion::Save(const QString& sFile) const {
    if (!m_hRgn) {
        throw Error(26010, QStringLiteral("No region to save"));
    }
    const QByteArray data = RegionToData(*m_hRgn);
    QTemporaryFile file(QFileInfo(sFile).absoluteFilePath() + QStringLiteral(".XXXXXX"));
    if (!file.open() || file.write(data) != data.size() || !file.flush()) {
        throw NotWritten();
    }
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    file.close();
    QFile::remove(sFile);
    if (!file.rename(sFile)) {
        throw NotWritten();
    }
    file.setAutoRemove(false);
}

bool cDIBSectionRegion::LoadFromFile(const QString& sFile) {
    QFile file(sFile);
    if (!QFileInfo(sFile).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > kMostFileBytes) {
        return false;
    }
    return Replace(file.read(file.size())); // a buffer of that size is made
}

bool cDIBSectionRegion::LoadFromResource(const QString& id, const QString& libraryFile) {
    bool numeric = false;
    id.toDouble(&numeric);
    const QString name = numeric ? QLatin1Char('#') + id : id;
    std::optional<ResourceLibrary> library;
    if (!libraryFile.isEmpty()) {
        library.emplace(libraryFile);
        if (!library->Open()) {
            throw Error(26013, QStringLiteral("Can't open DLL for Resource Access"));
        }
    }
    const QResource resource((library ? library->Root() : QString()) + QLatin1Char('/') + name);
    if (!resource.isValid()) {
        throw Error(26014, QStringLiteral("Resource with ID %1 could not be found").arg(id));
    }
    const QByteArray data = resource.uncompressedData();
    if (data.isEmpty()) {
        throw Error(26014,
                    QStringLiteral("Cannot access data for resource with ID %1 could not be found").arg(id));
    }
    return Replace(data);
}

bool cDIBSectionRegion::Replace(const QByteArray& data) {
    std::optional<QRegion> region = RegionFromData(data);
    if (!region) {
        return false;
    }
    Destroy();
    m_hRgn = std::move(region);
    return true;
}
