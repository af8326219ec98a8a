#pragma once

#include "sources/platform.h"
#include "sources/property_values.h"

#include <QList>
#include <QString>

#include <optional>
#include <utility>
#include <variant>

namespace SystemProfiler {

// Why a profiler run gave no items; its description is the section's failure message.
struct Failure
{
    enum class Kind { processFailed, unreadableOutput, noAnswer };
    Kind kind = Kind::unreadableOutput;
    QString detail; // processFailed: the cause; noAnswer: the data type
    int seconds = 0; // noAnswer only: the time limit

    static Failure processFailed(QString detail) { return {Kind::processFailed, std::move(detail)}; }
    static Failure unreadableOutput() { return {Kind::unreadableOutput, {}}; }
    static Failure noAnswer(QString dataType, int seconds) { return {Kind::noAnswer, std::move(dataType), seconds}; }

    QString description() const;

    friend bool operator==(const Failure &, const Failure &) = default;
};

// The item dictionaries under `dataType` in the tool's JSON answer, or its failure.
// Blocking: returns once the tool has exited.
std::variant<QList<PropertyDictionary>, Failure> items(const ProfilerSource &source, const QString &dataType,
                                                       const std::optional<QString> &detailLevel = std::nullopt);

// The rules that read the tool's answer, apart from running it.
std::variant<QList<PropertyDictionary>, Failure> parseAnswer(const ProcessOutput &output, const QString &dataType);

} // namespace SystemProfiler

// A collector's outcome: its value, or the profiler failure that stopped it.
template <typename T>
class Result
{
public:
    Result(T value) : m_value(std::move(value)) {}
    Result(SystemProfiler::Failure failure) : m_value(std::move(failure)) {}

    bool ok() const { return std::holds_alternative<T>(m_value); }
    const T &value() const { return std::get<T>(m_value); }
    T &value() { return std::get<T>(m_value); }
    const SystemProfiler::Failure &failure() const { return std::get<SystemProfiler::Failure>(m_value); }

private:
    std::variant<T, SystemProfiler::Failure> m_value;
};
