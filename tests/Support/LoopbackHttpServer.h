// A tiny HTTP server on 127.0.0.1 for the report tests: it accepts
// connections on a port of its own, keeps every request's raw bytes, answers
// "200 OK" and closes.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class LoopbackHttpServer {
public:
    LoopbackHttpServer()
    {
        m_hListen = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(m_hListen, reinterpret_cast<sockaddr*>(&address), sizeof(address));
        socklen_t nLength = sizeof(address);
        getsockname(m_hListen, reinterpret_cast<sockaddr*>(&address), &nLength);
        m_nPort = ntohs(address.sin_port);
        listen(m_hListen, 16);
        m_thread = std::thread([this] { Serve(); });
    }
    ~LoopbackHttpServer()
    {
        m_bStop = true;
        m_thread.join();
        close(m_hListen);
    }
    LoopbackHttpServer(const LoopbackHttpServer&) = delete;
    LoopbackHttpServer& operator=(const LoopbackHttpServer&) = delete;

    int Port() const { return m_nPort; }
    std::vector<std::string> Requests()
    {
        std::lock_guard<std::mutex> lock(m_lock);
        return m_setRequest;
    }
    // Waits until nCount requests have arrived (or ten seconds have passed).
    std::vector<std::string> WaitRequests(std::size_t nCount)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (Requests().size() < nCount && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return Requests();
    }

    static std::string HeadOf(const std::string& strRequest)
    {
        return strRequest.substr(0, strRequest.find("\r\n\r\n"));
    }
    static std::string BodyOf(const std::string& strRequest)
    {
        const std::size_t nAt = strRequest.find("\r\n\r\n");
        return nAt == std::string::npos ? std::string() : strRequest.substr(nAt + 4);
    }

private:
    void Serve()
    {
        while (!m_bStop) {
            pollfd waiting{m_hListen, POLLIN, 0};
            const int hClient = poll(&waiting, 1, 20) > 0 ? accept(m_hListen, nullptr, nullptr) : -1;
            if (hClient < 0)
                continue;
            std::string strRequest = ReadRequest(hClient);
            if (!strRequest.empty()) {
                // Kept before the answer goes out, so a sender that has its
                // answer finds its request here.
                {
                    std::lock_guard<std::mutex> lock(m_lock);
                    m_setRequest.push_back(std::move(strRequest));
                }
                static const char kAnswer[] = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
                send(hClient, kAnswer, sizeof(kAnswer) - 1, MSG_NOSIGNAL);
            }
            close(hClient);
        }
    }

    // Reads the head, then as many body bytes as Content-Length says.
    static std::string ReadRequest(int hClient)
    {
        std::string strRequest;
        char buffer[4096];
        for (;;) {
            const std::size_t nHeadEnd = strRequest.find("\r\n\r\n");
            const std::size_t nLengthAt = strRequest.find("Content-Length: ");
            if (nHeadEnd != std::string::npos &&
                strRequest.size() >=
                    nHeadEnd + 4 + (nLengthAt < nHeadEnd ? std::strtoul(&strRequest[nLengthAt + 16], nullptr, 10) : 0))
                return strRequest;
            pollfd readable{hClient, POLLIN, 0};
            const ssize_t nRead = poll(&readable, 1, 5000) > 0 ? recv(hClient, buffer, sizeof(buffer), 0) : 0;
            if (nRead <= 0)
                return strRequest;
            strRequest.append(buffer, static_cast<std::size_t>(nRead));
        }
    }

    int m_hListen = -1;
    int m_nPort = 0;
    std::atomic<bool> m_bStop{false};
    std::mutex m_lock;
    std::vector<std::string> m_setRequest;
    std::thread m_thread;
};
