#include "family/genicam/GenicamDevice.h"

#include "family/genicam/AccessClock.h"
#include "family/genicam/AravisSupport.h"
#include "family/genicam/FreshReads.h"

#include <algorithm>
#include <future>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

// How long closing a tree waits for the device thread to end before leaving it to end alone.
const std::chrono::milliseconds kReleaseWait(250);

} // namespace

std::int64_t GenicamDevice::nowMs()
{
    return AccessClock::nowMs();
}

GenicamDevice::GenicamDevice(Publisher publisher) : m_publisher(std::move(publisher)) {}

GenicamDevice::~GenicamDevice()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

bool GenicamDevice::stopping()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_stop;
}

void GenicamDevice::release(std::unique_ptr<GenicamDevice> device)
{
    if (!device)
        return;
    {
        std::lock_guard<std::mutex> lock(device->m_mutex);
        device->m_stop = true;
        device->m_jobs.clear(); // nothing queued is worth a device access any more
    }
    device->m_wake.notify_all();
    if (!device->m_finished.valid() || device->m_finished.wait_for(kReleaseWait) == std::future_status::ready)
        return; // the destructor joins a thread that has ended, or was never started
    std::thread([device = std::move(device)]() mutable { device.reset(); }).detach();
}

GenicamDevice::OpenResult GenicamDevice::open(Source source, const std::string& what)
{
    auto opened = std::make_shared<std::promise<std::shared_ptr<OpenResult>>>();
    std::future<std::shared_ptr<OpenResult>> result = opened->get_future();
    start(source, what, [opened](std::shared_ptr<OpenResult> r) { opened->set_value(std::move(r)); });
    return *result.get();
}

void GenicamDevice::start(Source source, const std::string& what,
                          std::function<void(std::shared_ptr<OpenResult>)> opened)
{
    auto finished = std::make_shared<std::promise<void>>();
    m_finished = finished->get_future();
    m_thread = std::thread([this, source, what, opened, finished] {
        AravisQuietScope quiet;
        auto result = std::make_shared<OpenResult>();
        openOnThread(source, what, *result);
        const bool ok = result->ok;
        opened(std::move(result));
        if (ok)
            run();
        closeSource();
        finished->set_value();
    });
}

void GenicamDevice::publish(Publication& publication, bool force)
{
    publication.connected = !m_errors.lost();
    publication.giveUpsAnswered = m_giveUpsAnswered;
    const bool news = force || m_errors.lost() != m_lostPublished;
    if (publication.empty() && !news)
        return;
    m_lostPublished = m_errors.lost();
    m_publisher(std::make_shared<Publication>(std::move(publication)));
    publication = Publication();
}

void GenicamDevice::enqueue(Job job)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void GenicamDevice::write(int feature, int place, const boost::any& value)
{
    Job job;
    job.type = Job::Write;
    job.feature = feature;
    job.place = place;
    job.value = value;
    enqueue(std::move(job));
}

void GenicamDevice::refresh()
{
    Job job;
    job.type = Job::Refresh;
    enqueue(std::move(job));
}

void GenicamDevice::barrier(std::uint64_t id)
{
    Job job;
    job.type = Job::Barrier;
    job.barrier = id;
    enqueue(std::move(job));
}

void GenicamDevice::post(std::function<void(ArvDevice*)> raw)
{
    Job job;
    job.type = Job::Raw;
    job.raw = std::move(raw);
    enqueue(std::move(job));
}

void GenicamDevice::watch(std::vector<int> features)
{
    Job job;
    job.type = Job::Watch;
    job.watched = std::move(features);
    enqueue(std::move(job));
}

void GenicamDevice::watchAll()
{
    Job job;
    job.type = Job::Watch;
    job.watchAll = true;
    enqueue(std::move(job));
}

void GenicamDevice::run()
{
    for (;;) {
        std::deque<Job> jobs;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_wake.wait_until(lock, nextDeadline(), [this] { return m_stop || !m_jobs.empty(); });
            if (m_stop)
                return;
            jobs.swap(m_jobs);
        }
        if (!jobs.empty())
            handle(jobs);
        runTimers();
    }
}

void GenicamDevice::handle(std::deque<Job>& jobs)
{
    // Writes that queued up together are read back once, and only what they may have changed: a
    // refused write its own feature, a write that took the features it may affect (a refresh, all).
    Publication publication;
    bool dirty = false;
    bool everything = false;
    std::vector<char> pending(m_layout.features.size(), 0);
    auto readBack = [&]() {
        if (everything) {
            // A refresh is asked for because something may have changed behind the tree's back.
            FreshReads fresh(m_gc);
            readAll(publication);
        } else {
            std::vector<int> features;
            for (std::size_t i = 0; i < pending.size(); ++i)
                if (pending[i])
                    features.push_back(static_cast<int>(i));
            readSome(features, publication);
        }
        std::fill(pending.begin(), pending.end(), 0);
        dirty = everything = false;
    };
    for (Job& job : jobs) {
        if (stopping())
            return; // the tree is closed: nobody waits for these any more
        switch (job.type) {
        case Job::Write: {
            const std::string reason = write(job.feature, job.value);
            if (!reason.empty()) {
                publication.errors.emplace_back(
                    job.place, refusedWriteMessage(m_layout.features[job.feature], job.value, reason));
                pending[static_cast<std::size_t>(job.feature)] = 1;
            } else {
                const std::vector<int>& affected = affectedBy(job.feature);
                if (affected.empty())
                    everything = true;
                for (int feature : affected)
                    pending[static_cast<std::size_t>(feature)] = 1;
            }
            dirty = true;
            break;
        }
        case Job::Refresh:
            dirty = everything = true;
            break;
        case Job::Raw:
            // A host's job may take its time (starting a stream, say): it is not timed as a
            // device access.
            if (job.raw)
                job.raw(m_device);
            break;
        case Job::Watch:
            setWatched(job);
            break;
        case Job::Barrier:
            if (dirty)
                readBack();
            publication.barrier = job.barrier;
            publish(publication);
            break;
        default:
            break;
        }
    }
    if (dirty)
        readBack();
    publish(publication);
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
