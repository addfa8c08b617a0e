#pragma once

#include <vector>

/// One person of the invented survey. NaN and the empty text stand for a question that was not answered or not asked.
struct Respondent {
    int Region;
    const char* Settlement;
    const char* Sex;
    int Age;
    int Education;
    int Employment;
    int HouseholdSize;
    double Income;
    double Hours;
    const char* CommuteMode;
    double CommuteMinutes;
    int BooksRead;
    const char* FavouriteGenre;
    double ReadingScore;
    int Satisfaction;
    int InterviewDay;  // days since 1970-01-01
    double InterviewStart;  // seconds since midnight
    double Weight;
};

/// The codes of Respondent::Employment that the questions depend on.
enum Employment { FullTime = 1, PartTime = 2, SelfEmployed = 3, Retired = 4, Student = 5, NotEmployed = 6 };

/// The codes of Respondent::Satisfaction behind the scale of 1 to 5.
enum Unanswered { Refused = 8, NoAnswer = 9 };

/// People as a survey might find them, the same at every call. Their weights have a mean of about 1.
[[nodiscard]] std::vector<Respondent> InventRespondents(int count);
