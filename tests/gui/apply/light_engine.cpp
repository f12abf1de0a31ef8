// An engine that weighs nothing: prints the profile that it was given, says that it is up, and does nothing until it is
// told to end. Status 0 on SIGTERM and SIGUSR2, 1 on SIGUSR1.
#include <csignal>
#include <cstdio>
#include <cstring>

int main(int count, char** words) {
  sigset_t ends;
  sigemptyset(&ends);
  sigaddset(&ends, SIGTERM);
  sigaddset(&ends, SIGUSR1);
  sigaddset(&ends, SIGUSR2);
  sigprocmask(SIG_BLOCK, &ends, nullptr);
  if (count != 4 || std::strcmp(words[1], "--config") != 0) return 2;
  std::FILE* profile = std::fopen(words[2], "re");
  if (profile == nullptr) return 2;
  for (int letter = std::fgetc(profile); letter != EOF; letter = std::fgetc(profile))
    std::putchar(letter);
  std::fclose(profile);
  std::puts("up");
  std::fflush(stdout);
  int number = 0;
  sigwait(&ends, &number);
  return number == SIGUSR1 ? 1 : 0;
}
