// How fast a sound starts playing:
//   in-process   Vandrel_PlaySound ( "x.mp3" ; 1 ) of a 10-minute MP3 in a vdhost session on the
//                virtual device (real time, capturing to a WAV file): the time the call takes
//                (target <= 20 ms) and the time from the call until the first frame is written to
//                the device (target <= 50 ms); medians of 5, each followed by Vandrel_StopSound.
//   whole runs   the same sound through PortAudio into an ALSA file device (a HOME of our own whose
//                .asoundrc makes the default device a file), against aplay of the same sound as a
//                WAV on that device: the time from starting the program until the first sample
//                that is not silence reaches the file. Medians of 5, alternating.
//   playback_bench VDHOST PLUGIN_DIR
#include <api/values.h>
#include <session/session.h>

#include "timing.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;
using namespace vdbench;

uintmax_t SizeOf(const fs::path& path) {
    std::error_code error;
    const auto size = fs::file_size(path, error);
    return error ? 0 : size;
}

// Seconds from `start` until the file holds a byte past `from` that is not 0; negative after 5 s.
double UntilSound(const fs::path& path, uintmax_t from, Clock::time_point start) {
    while (Seconds(Clock::now() - start) < 5) {
        std::ifstream in(path, std::ios::binary);
        in.seekg(std::streamoff(from));
        char block[65536];
        while (in.read(block, sizeof block) || in.gcount() > 0) {
            for (std::streamsize i = 0; i < in.gcount(); ++i)
                if (block[i] != 0) return Seconds(Clock::now() - start);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    return -1;
}

// Starts a program, output thrown away; waits for the first sound in the device's file, then stops
// the program. ALSA's file device over its null device takes frames as fast as they come, so this
// is the time to the first sound, not a real-time play.
double FirstSoundOfProgram(const std::vector<std::string>& args, const fs::path& raw) {
    // ALSA's file device starts its file afresh when it opens it.
    std::error_code error;
    fs::remove(raw, error);
    const auto start = Clock::now();
    const pid_t pid = Start(args);
    if (pid < 0) return -1;
    const double seconds = UntilSound(raw, 0, start);
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
    return seconds;
}


// Vandrel_PlaySound ( mp3 ; 1 ) in a session, 5 times after a warm-up: the call's time and the time
// to the first sound in `device`, the file the output writes. false when a play failed.
bool InProcess(const fs::path& folder, const std::string& plugins, const std::string& mp3, const fs::path& device,
               const char* name) {
    std::vector<double> calls, firsts;
    bool failed = false;
    {
        vdhost::SessionOptions options;
        options.database = folder / "session.vddb";
        options.pluginFolders = {plugins};
        vdhost::Session session(options);
        vdhost::calc::Variables locals;
        locals.set(u"$p", vdhost::makeTextUtf8(mp3));
        for (int i = 0; i <= 5 && !failed; ++i) {
            const uintmax_t from = SizeOf(device);
            const auto start = Clock::now();
            const std::string answer = vdhost::utf8Of(session.evaluate(u"Vandrel_PlaySound ( $p ; 1 )", locals));
            const double call = Seconds(Clock::now() - start);
            // A capture's header comes with its first frames; after that, any growth is sound.
            const double first = UntilSound(device, std::max<uintmax_t>(from, 100), start);
            session.evaluate(u"Vandrel_StopSound", locals);
            failed = answer != "$0:Vandrel_PlaySound: No error." || first < 0;
            if (i == 0) std::printf("in-process, %s: first call (opens the output) %.1f ms, first sound %.1f ms\n", name,
                                    1000 * call, 1000 * first);
            else calls.push_back(call), firsts.push_back(first);
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
        }
    }
    if (failed) {
        std::printf("Vandrel_PlaySound on the %s failed\n", name);
        return false;
    }
    std::printf("in-process, %s: Vandrel_PlaySound ( x.mp3 ; 1 ) returns after %.1f ms (target <= 20)\n", name,
                1000 * Median(calls));
    std::printf("in-process, %s: first sound on the device after %.1f ms (target <= 50)\n", name,
                1000 * Median(firsts));
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    // The child that plays through PortAudio: HOME is already the one whose .asoundrc makes the
    // default device a file.
    if (argc == 6 && std::string(argv[3]) == "--through-alsa") {
        unsetenv("VANDREL_AUDIO");
        return InProcess(argv[4], argv[2], argv[5], fs::path(argv[4]) / "device.raw", "ALSA file device") ? 0 : 1;
    }
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("play-bench");
    if (folder.empty()) return 1;
    const std::string mp3 = (folder / "x.mp3").string(), wav = (folder / "x.wav").string();
    const fs::path capture = folder / "capture.wav", raw = folder / "device.raw";
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i", "sine=frequency=440:duration=600", "-ac", "2", "-c:a",
             "libmp3lame", "-b:a", "128k", mp3}) < 0 ||
        Run({"ffmpeg", "-nostdin", "-y", "-i", mp3, "-t", "3", "-c:a", "pcm_f32le", wav}) < 0) {
        std::printf("ffmpeg could not make the test sound\n");
        return 1;
    }

    // In-process, on the virtual device.
    setenv("VANDREL_AUDIO", ("virtual:out=" + capture.string()).c_str(), 1);
    std::printf("input      10-minute MP3, 44100 Hz stereo, 128 kbit/s; medians of 5 after one warm-up\n");
    if (!InProcess(folder, plugins, mp3, capture, "virtual device")) return 1;

    // Whole programs through ALSA's file device.
    const fs::path home = folder / "home";
    fs::create_directories(home);
    std::ofstream(home / ".asoundrc") << "pcm.!default { type file slave.pcm \"null\" file \"" << raw.string()
                                      << "\" format \"raw\" }\n";
    setenv("HOME", home.c_str(), 1);
    unsetenv("VANDREL_AUDIO");
    std::fflush(stdout);
    const std::string self = fs::read_symlink("/proc/self/exe").string();
    std::system(("'" + self + "' '" + vdhost + "' '" + plugins + "' --through-alsa '" + folder.string() + "' '" + mp3 +
                 "'").c_str());
    std::vector<double> ours, aplay;
    for (int i = 0; i < 5; ++i) {
        ours.push_back(FirstSoundOfProgram({vdhost, "--plugins", plugins, "--db", (folder / "run.vddb").string(), "eval",
                                            "Vandrel_PlaySound ( \"" + mp3 + "\" ; 0 ; 0 ; 2 )"},
                                           raw));
        aplay.push_back(FirstSoundOfProgram({"aplay", "-q", wav}, raw));
    }
    if (*std::min_element(ours.begin(), ours.end()) < 0 || *std::min_element(aplay.begin(), aplay.end()) < 0) {
        std::printf("whole runs through ALSA's file device: a run never reached the device (is aplay installed?)\n");
    } else {
        std::printf("whole runs, ALSA file device: vdhost start to first sound %.1f ms, aplay of the same sound %.1f ms\n",
                    1000 * Median(ours), 1000 * Median(aplay));
    }
    std::error_code error;
    fs::remove_all(folder, error);
    return 0;
}
