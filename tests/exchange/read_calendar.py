#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Lorvanite authors
# SPDX-License-Identifier: GPL-3.0-or-later

"""read_calendar FILE   prints the events of a calendar as another program reads them."""
import sys

import icalendar

with open(sys.argv[1], "rb") as file:
    calendar = icalendar.Calendar.from_ical(file.read())
for event in calendar.walk("VEVENT"):
    print(event["UID"], event["SEQUENCE"], event.decoded("DTSTAMP").isoformat(),
          event.decoded("DTSTART"), event.decoded("DTEND"), event["SUMMARY"],
          str(event.get("DESCRIPTION", "")).replace("\n", "/"), sep="|")
