#include "samples/Survey.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string_view>

namespace {

constexpr double NotAsked = std::numeric_limits<double>::quiet_NaN();

/// A generator of our own, so that every compiler and library makes the same survey.
class Dice {
  public:
    /// Uniform in [0, 1).
    double Uniform() {
        State += 0x9E3779B97F4A7C15U;
        std::uint64_t bits = State;
        bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
        bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
        return static_cast<double>((bits ^ (bits >> 31)) >> 11) * 0x1.0p-53;
    }
    /// Nearly normal with mean 0 and standard deviation 1.
    double Normal() {
        double sum = -6;
        for (int i = 0; i < 12; ++i) {
            sum += Uniform();
        }
        return sum;
    }
    /// Whole, from first to last.
    int Whole(int first, int last) { return first + static_cast<int>(Uniform() * (last - first + 1)); }
    bool Happens(double probability) { return Uniform() < probability; }
    /// An index, as likely as its share of the sum of all shares.
    template <typename Shares>
    int Pick(const Shares& shares) {
        double sum = 0;
        for (const double share : shares) {
            sum += share;
        }
        double left = Uniform() * sum;
        int index = 0;
        for (const double share : shares) {
            left -= share;
            if (left < 0) {
                return index;
            }
            ++index;
        }
        return index - 1;
    }

  private:
    std::uint64_t State = 20240630;
};

constexpr std::array Settlements = {"City", "Town", "Village"};
constexpr std::array Modes = {"Car", "Train", "Bus", "Bicycle", "On foot"};
constexpr std::array Genres = {"Crime", "History", "Romance", "Science fiction", "Non-fiction", "Poetry"};

bool Works(const Respondent& person) {
    return person.Employment <= SelfEmployed;
}
bool IsWoman(const Respondent& person) {
    return std::string_view(person.Sex) == "F";
}
bool LivesIn(const Respondent& person, std::string_view settlement) {
    return person.Settlement == settlement;
}
double RoundTo(double value, double unit) {
    return std::round(value / unit) / (1 / unit);
}
double Bounded(double value, double low, double high) {
    return std::min(std::max(value, low), high);
}

void Settle(Respondent& person, Dice& dice) {
    // Shares of city, town and village in each region.
    constexpr std::array<std::array<double, 3>, 5> shares = {{
        {0.15, 0.35, 0.50},
        {0.40, 0.40, 0.20},
        {0.60, 0.30, 0.10},
        {0.30, 0.45, 0.25},
        {0.05, 0.35, 0.60},
    }};
    const int region = dice.Pick(std::array{0.18, 0.24, 0.33, 0.17, 0.08});
    person.Region = region + 1;
    person.Settlement = Settlements[static_cast<std::size_t>(dice.Pick(shares[static_cast<std::size_t>(region)]))];
    person.Sex = dice.Happens(0.53) ? "F" : "M";
    person.Age = static_cast<int>(Bounded(48 + 18 * dice.Normal(), 18, 93));
}

void Educate(Respondent& person, Dice& dice) {
    const double level = 3.4 + (LivesIn(person, "City") ? 0.6 : 0) - 0.02 * (person.Age - 45) + 1.2 * dice.Normal();
    person.Education = static_cast<int>(Bounded(std::round(level), 1, person.Age < 22 ? 4 : 6));
}

int EmploymentOf(const Respondent& person, Dice& dice) {
    if (person.Age >= 66) {
        return dice.Happens(0.94) ? Retired : SelfEmployed;
    }
    if (person.Age <= 25 && dice.Happens(0.55)) {
        return Student;
    }
    const double partTime = IsWoman(person) ? 0.26 : 0.08;
    const double without = 0.22 - 0.03 * person.Education;
    const int picked = dice.Pick(std::array{1 - partTime - without - 0.1, partTime, 0.1, without});
    return picked == 3 ? static_cast<int>(NotEmployed) : FullTime + picked;
}

void Employ(Respondent& person, Dice& dice) {
    person.Employment = EmploymentOf(person, dice);
    person.HouseholdSize = 1 + dice.Pick(person.Age >= 66 ? std::array{0.45, 0.45, 0.06, 0.03, 0.01}
                                                          : std::array{0.25, 0.30, 0.20, 0.18, 0.07});
    constexpr std::array<double, 6> usualHours = {40, 22, 44, NotAsked, NotAsked, NotAsked};
    const double hours = usualHours[static_cast<std::size_t>(person.Employment - 1)] + 5 * dice.Normal();
    person.Hours = RoundTo(Bounded(hours, 4, 80), 0.5);
    if (!Works(person)) {
        person.Hours = NotAsked;
    }
}

void Pay(Respondent& person, Dice& dice) {
    constexpr std::array<double, 6> shareOfFullPay = {1, 0.62, 1.05, 0.58, 0.3, 0.4};
    const double experience = 1 + 0.012 * (std::min(person.Age, 55) - 18);
    const double full = 1150 * std::pow(1.17, person.Education) * experience * (person.Region == 3 ? 1.15 : 1);
    const double spread = std::exp(0.42 * dice.Normal());
    const double earnings = full * shareOfFullPay[static_cast<std::size_t>(person.Employment - 1)] * spread;
    person.Income = RoundTo(earnings * (1 + 0.18 * (person.HouseholdSize - 1)), 10);
    if (dice.Happens(0.03)) {
        person.Income = NotAsked;
    }
}

void Commute(Respondent& person, Dice& dice) {
    person.CommuteMode = "";
    person.CommuteMinutes = NotAsked;
    if (!Works(person) || dice.Happens(0.07)) {
        return;
    }
    const bool isCity = LivesIn(person, "City");
    const int mode = dice.Pick(isCity                    ? std::array{0.26, 0.24, 0.22, 0.18, 0.10}
                               : LivesIn(person, "Town") ? std::array{0.52, 0.14, 0.12, 0.12, 0.10}
                                                         : std::array{0.76, 0.07, 0.09, 0.04, 0.04});
    constexpr std::array<double, 5> usualMinutes = {24, 47, 36, 19, 13};
    person.CommuteMode = Modes[static_cast<std::size_t>(mode)];
    const double usual = usualMinutes[static_cast<std::size_t>(mode)] * (LivesIn(person, "Village") ? 1.35 : 1);
    person.CommuteMinutes = std::round(Bounded(usual * std::exp(0.4 * dice.Normal()), 2, 150));
}

void Read(Respondent& person, Dice& dice) {
    const double onTrain = std::string_view(person.CommuteMode) == "Train" ? 1.5 : 1;
    const double usual = 1.6 * person.Education * (IsWoman(person) ? 1.4 : 1) * onTrain;
    person.BooksRead = static_cast<int>(Bounded(usual * std::exp(0.8 * dice.Normal()) - 1.5, 0, 120));
    const double score = 36 + 3.2 * person.Education + 0.25 * std::min(person.BooksRead, 40) + 8 * dice.Normal();
    person.ReadingScore = RoundTo(Bounded(score, 0, 100), 0.1);
    const int genre = dice.Pick(IsWoman(person) ? std::array{0.34, 0.12, 0.24, 0.07, 0.18, 0.05}
                                                : std::array{0.26, 0.24, 0.03, 0.20, 0.24, 0.03});
    person.FavouriteGenre = person.BooksRead == 0 ? "" : Genres[static_cast<std::size_t>(genre)];
}

void Judge(Respondent& person, Dice& dice) {
    const double income = std::isnan(person.Income) ? 0 : (person.Income - 3000) / 2500;
    const double commute = std::isnan(person.CommuteMinutes) ? 0 : (person.CommuteMinutes - 25) / 30;
    const double view = 3.5 + 0.4 * income - 0.5 * commute + (person.Employment == NotEmployed ? -0.8 : 0);
    person.Satisfaction = static_cast<int>(Bounded(std::round(view + 0.9 * dice.Normal()), 1, 5));
    if (dice.Happens(std::isnan(person.Income) ? 0.25 : 0.02)) {
        person.Satisfaction = Refused;
    } else if (dice.Happens(0.015)) {
        person.Satisfaction = NoAnswer;
    }
}

void Interview(Respondent& person, Dice& dice) {
    constexpr int firstDay = 19754;  // 2024-02-01
    person.InterviewDay = firstDay + dice.Whole(0, 120);
    person.InterviewStart = Works(person) ? dice.Whole(16 * 60, 20 * 60 + 30) * 60 : dice.Whole(9 * 60, 19 * 60) * 60;
    const double reached = (person.Age < 35 ? 0.7 : 1) * (LivesIn(person, "City") ? 0.85 : 1.1);
    person.Weight = (0.85 + 0.3 * dice.Uniform()) / reached;
}

void ScaleWeights(std::vector<Respondent>& people) {
    double sum = 0;
    for (const Respondent& person : people) {
        sum += person.Weight;
    }
    for (Respondent& person : people) {
        person.Weight = std::round(10000 * person.Weight * static_cast<double>(people.size()) / sum) / 10000;
    }
}

}  // namespace

std::vector<Respondent> InventRespondents(int count) {
    Dice dice;
    std::vector<Respondent> people(static_cast<std::size_t>(count));
    for (Respondent& person : people) {
        for (const auto step : {Settle, Educate, Employ, Pay, Commute, Read, Judge, Interview}) {
            step(person, dice);
        }
    }
    ScaleWeights(people);
    return people;
}
